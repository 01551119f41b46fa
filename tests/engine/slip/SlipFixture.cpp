#include "SlipFixture.h"

#include "engine/word/Bookmarks.h"
#include "engine/word/Document.h"
#include "engine/word/Documents.h"
#include "engine/word/Range.h"

#include <filesystem>
#include <fstream>

namespace wordbm::slip::test {

namespace fs = std::filesystem;

namespace {

// cp1252 ("ü" is 0xFC), CR LF, ";"; only the fields the slip reads.
const char* const ControlFile =
    "BueroAdr1;BueroAdr2;BueroAdr3;BankKto;KliAdr1;KliAdr2;KliAdr3;KliAdr4;BesrBet;BesrRefNr;Referenz\r\n"
    "Treuhand Sonnenberg AG;Seefeldstrasse 112;8008 Z\xFCrich;CH44 3199 9123 0008 8901 2;Firma;Muster AG;"
    "Dorfstrasse 14;8802 Kilchberg;1'949.75;21 00000 00003 13947 14300 09017;Rechnung 24100\r\n"
    "Treuhand Sonnenberg AG;Seefeldstrasse 112;8008 Z\xFCrich;CH44 3199 9123 0008 8901 2;Firma;Muster AG;"
    "Dorfstrasse 14;8802 Kilchberg;0.00;21 00000 00003 13947 14300 09017;Rechnung 24101\r\n"
    "Treuhand Sonnenberg AG;Seefeldstrasse 112;8008 Z\xFCrich;CH44 3199 9123 0008 8901 2;;;;;"
    "250.00;21 00000 00003 13947 14300 09017;Rechnung 24102\r\n"
    "Treuhand Sonnenberg AG;Seefeldstrasse 112;8008 Z\xFCrich;CH44 3199 9123 0008 8901 2;Firma;Muster AG;"
    "Dorfstrasse 14;8802 Kilchberg;75.50;21 00000 00003 13947 14300 09017;\r\n";

} // namespace

SlipTest::SlipTest() {
    const std::string path = folder.path() + "/Rechnungslauf.csv";
    std::ofstream(path, std::ios::binary) << ControlFile;
    csv.ReadFile(path);
    fields.FieldsBESR();
}

void SlipTest::open(const std::string& form) {
    const fs::path source =
        form.find('/') == std::string::npos ? fs::path(WORDBM_CORPUS_DIR) / "docx" / form : fs::path(form);
    const fs::path copy = fs::path(folder.path()) / source.filename();
    if (source != copy) {
        fs::copy_file(source, copy, fs::copy_options::overwrite_existing);
    }
    word = ooxml::DocxApplication::create();
    doc = word->Documents()->Open(copy.string());
}

void SlipTest::fill(std::int32_t row) {
    std::vector<std::string> names;
    for (int index = 1; index <= doc->Bookmarks()->Count(); ++index) {
        names.push_back(doc->Bookmarks()->Item(index)->Name());
    }
    for (const std::string& name : names) {
        const std::string field = fields.BookmarkFieldGet(name);
        if (modESQR::IsSlipName(field)) {
            const word::BookmarkPtr placeholder = doc->Bookmarks()->Item(name);
            placeholder->Select();
            slip.Fill(*word, *doc, *placeholder, field, coder, row);
        }
    }
    slip.Finish(*doc, coder, row);
}

std::vector<word::ShapePtr> SlipTest::shapesNamed(const std::string& name) {
    std::vector<word::ShapePtr> found;
    for (int index = 1; index <= doc->Shapes()->Count(); ++index) {
        if (doc->Shapes()->Item(index)->Name() == name) {
            found.push_back(doc->Shapes()->Item(index));
        }
    }
    return found;
}

int SlipTest::countOf(int type) {
    int count = 0;
    for (int index = 1; index <= doc->Shapes()->Count(); ++index) {
        count += doc->Shapes()->Item(index)->Type() == type ? 1 : 0;
    }
    return count;
}

std::string SlipTest::boxText(const word::ShapePtr& canvas, int item) {
    return canvas->CanvasItems()->Item(item)->TextFrame()->TextRange()->Text();
}

int SlipTest::picturesIn(const word::ShapePtr& canvas) {
    int count = 0;
    for (int index = 1; index <= canvas->CanvasItems()->Count(); ++index) {
        count += canvas->CanvasItems()->Item(index)->Type() == word::wd::msoPicture ? 1 : 0;
    }
    return count;
}

std::vector<std::string> SlipTest::slipFields() {
    std::vector<std::string> found;
    for (int index = 1; index <= doc->Bookmarks()->Count(); ++index) {
        const std::string field = fields.BookmarkFieldGet(doc->Bookmarks()->Item(index)->Name());
        if (modESQR::IsSlipName(field)) {
            found.push_back(field);
        }
    }
    return found;
}

} // namespace wordbm::slip::test
