#include "SlipFixture.h"

#include "engine/word/Bookmarks.h"
#include "engine/word/Document.h"
#include "engine/word/Documents.h"
#include "engine/word/Range.h"
#include "engine/word/Shapes.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

namespace wordbm::slip::test {

namespace {

// cp1252, CR LF, ";" as the export writes it; only the fields the slip reads. "ü" is 0xFC.
const char* const ControlFile =
    "BueroAdr1;BueroAdr2;BueroAdr3;BueroAdr4;BueroAdr5;BankKto;KliAdr1;KliAdr2;KliAdr3;KliAdr4;KliAdr5;"
    "BesrBet;BesrRefNr;Referenz;RgDatum\r\n"
    "Treuhand Sonnenberg AG;Seefeldstrasse 112;8008 Z\xFCrich;;;CH44 3199 9123 0008 8901 2;Firma;"
    "Muster AG;Dorfstrasse 14;8802 Kilchberg;;1'949.75;21 00000 00003 13947 14300 09017;Rechnung 24100;"
    "21.11.2026\r\n"
    "Treuhand Sonnenberg AG;Seefeldstrasse 112;8008 Z\xFCrich;;;CH44 3199 9123 0008 8901 2;Firma;"
    "Muster AG;Dorfstrasse 14;8802 Kilchberg;;0.00;21 00000 00003 13947 14300 09017;Rechnung 24101;"
    "21.11.2026\r\n"
    "Treuhand Sonnenberg AG;Seefeldstrasse 112;8008 Z\xFCrich;;;CH44 3199 9123 0008 8901 2;;;;;;"
    "250.00;21 00000 00003 13947 14300 09017;Rechnung 24102;21.11.2026\r\n"
    "Treuhand Sonnenberg AG;Seefeldstrasse 112;8008 Z\xFCrich;;;CH44 3199 9123 0008 8901 2;Firma;"
    "Muster AG;Dorfstrasse 14;8802 Kilchberg;;75.50;21 00000 00003 13947 14300 09017;;21.11.2026\r\n";

} // namespace

std::string corpusPath(const std::string& name) {
    return std::string(WORDBM_CORPUS_DIR) + "/docx/" + name;
}

SlipTest::SlipTest() {
    const std::string csvPath = folder.path() + "/Rechnungslauf.csv";
    std::ofstream(csvPath, std::ios::binary) << ControlFile;
    csv.ReadFile(csvPath);
    fields.FieldsBESR();
}

void SlipTest::open(const std::string& form) {
    // A corpus name or a file elsewhere is copied into the fixture's folder; a file there is opened as it is.
    const std::filesystem::path source = form.find('/') == std::string::npos ? corpusPath(form) : form;
    const std::filesystem::path copy = std::filesystem::path(folder.path()) / source.filename();
    if (source != copy) {
        std::filesystem::copy_file(source, copy, std::filesystem::copy_options::overwrite_existing);
    }
    word = ooxml::DocxApplication::create();
    doc = word->Documents()->Open(copy.string());
}

void SlipTest::build(const SlipChoices& choices) {
    slip.Build(*word, *doc, choices);
}

void SlipTest::fill(std::int32_t row) {
    // By name: filling changes texts, never names, but a collection walked by index is Word's business.
    std::vector<std::string> names;
    const word::BookmarksPtr bookmarks = doc->Bookmarks();
    for (int index = 1; index <= bookmarks->Count(); ++index) {
        names.push_back(bookmarks->Item(index)->Name());
    }
    for (const std::string& name : names) {
        const std::string field = fields.BookmarkFieldGet(name);
        if (modESQR::IsSlipName(field)) {
            const word::BookmarkPtr placeholder = doc->Bookmarks()->Item(name);
            placeholder->Select();
            slip.Fill(*word, *doc, *placeholder, field, coder, row);
        }
    }
}

std::vector<word::ShapePtr> SlipTest::shapesNamed(const std::string& name) {
    std::vector<word::ShapePtr> found;
    const word::ShapesPtr shapes = doc->Shapes();
    for (int index = 1; index <= shapes->Count(); ++index) {
        if (shapes->Item(index)->Name() == name) {
            found.push_back(shapes->Item(index));
        }
    }
    return found;
}

word::ShapePtr SlipTest::canvas(const std::string& name) {
    const auto found = shapesNamed(name);
    return found.empty() ? nullptr : found.front();
}

int SlipTest::canvasCount() {
    int count = 0;
    const word::ShapesPtr shapes = doc->Shapes();
    for (int index = 1; index <= shapes->Count(); ++index) {
        count += shapes->Item(index)->Type() == word::wd::msoCanvas ? 1 : 0;
    }
    return count;
}

std::string SlipTest::boxText(const word::ShapePtr& canvas, int item) {
    return canvas->CanvasItems()->Item(item)->TextFrame()->TextRange()->Text();
}

int SlipTest::picturesIn(const word::ShapePtr& canvas) {
    int count = 0;
    const word::CanvasShapesPtr items = canvas->CanvasItems();
    for (int index = 1; index <= items->Count(); ++index) {
        count += items->Item(index)->Type() == word::wd::msoPicture ? 1 : 0;
    }
    return count;
}

std::vector<std::string> SlipTest::slipFields() {
    std::vector<std::string> found;
    const word::BookmarksPtr bookmarks = doc->Bookmarks();
    for (int index = 1; index <= bookmarks->Count(); ++index) {
        const std::string field = fields.BookmarkFieldGet(bookmarks->Item(index)->Name());
        if (modESQR::IsSlipName(field)) {
            found.push_back(field);
        }
    }
    std::sort(found.begin(), found.end());
    return found;
}

} // namespace wordbm::slip::test
