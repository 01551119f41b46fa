// Invoices joined from the prepared form against the same invoices filled through the embedded word
// processor, part by part, on the sample form with its text fields only.
#include "engine/merge/PreparedForm.h"

#include "ControlFile.h"
#include "data/CSVfile.h"
#include "data/KnownFields.h"
#include "engine/merge/BookmarkFiller.h"
#include "engine/ooxml/DocxApplication.h"
#include "engine/ooxml/Package.h"
#include "engine/word/Bookmarks.h"
#include "engine/word/Document.h"
#include "engine/word/Documents.h"
#include "engine/word/WordConstants.h"
#include "kit/TempDir.h"
#include "qrbill/QRCoder.h"
#include "qrbill/QRImage.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace wordbm::testing {
namespace {

namespace fs = std::filesystem;

class PreparedFormTest : public ::testing::Test {
protected:
    PreparedFormTest() {
        known.FieldsBESR();
        // Values a form must show exactly as the control file holds them: markup characters, blanks
        // inside, an empty value (typed as one blank), and one the word processor must type (a tab).
        ControlFile control({1, 2, 3, 4});
        control.set(1, "KliAdr1", "Müller & Söhne <AG> \"Zürich\" 'Ost'");
        control.set(1, "KliAdr2", "Bahnhofstrasse  1");
        control.set(2, "KliAdr1", "");
        control.set(3, "KliAdr1", "Meier\tund Co");
        control.write(csvPath);
        data.ReadFile(csvPath);
    }

    // The sample form without the payment part and QR code, which only the word processor can make.
    std::string textFieldsOnly() {
        const auto word = ooxml::DocxApplication::create();
        const word::DocumentPtr doc = word->Documents()->Open(ControlFile::sampleForm());
        const word::BookmarksPtr bookmarks = doc->Bookmarks();
        for (int i = bookmarks->Count(); i >= 1; --i) {
            const std::string field = known.BookmarkFieldGet(bookmarks->Item(i)->Name());
            if (BookmarkFiller::isCodePicture(field) || field.starts_with(BookmarkFiller::SlipPrefix)) {
                bookmarks->Item(i)->Delete();
            }
        }
        const std::string form = folder / "Rechnung.docx";
        doc->SaveAs2(form);
        return form;
    }

    std::unique_ptr<PreparedForm> prepare(const std::string& form) {
        const auto word = ooxml::DocxApplication::create();
        return PreparedForm::make(*word, form, known, filler, folder.path().string());
    }

    // The invoice of `row` as the merge run makes it through the word processor.
    std::string filledByWord(const std::string& form, int row) {
        const auto word = ooxml::DocxApplication::create();
        const word::DocumentPtr doc = word->Documents()->Open(form);
        EXPECT_TRUE(filler.fill(*word, *doc, row).empty());
        const std::string path = folder / ("word-" + std::to_string(row) + ".docx");
        doc->SaveAs2(path);
        doc->Close(word::wd::wdDoNotSaveChanges);
        return path;
    }

    std::vector<std::string> textsOf(const PreparedForm& form, int row) {
        std::vector<std::string> texts;
        for (const std::string& field : form.fields()) {
            texts.push_back(filler.textOf(field, row));
        }
        return texts;
    }

    TempDir folder;
    std::string csvPath = folder / "Lauf.csv";
    KnownFields known;
    CSVfile data;
    QRCoder coder{data};
    QRImage image;
    BookmarkFiller filler{known, data, coder, image, nullptr, {}};
};

void expectSameParts(const std::string& joined, const std::string& byWord) {
    const auto ours = ooxml::Package::fromBytes(joined);
    const auto theirs = ooxml::Package::open(byWord);
    ASSERT_EQ(ours->partNames(), theirs->partNames());
    for (const std::string& part : theirs->partNames()) {
        EXPECT_EQ(ours->bytes(part), theirs->bytes(part)) << part;
    }
}

TEST_F(PreparedFormTest, InvoicesAreTheWordProcessorsPartByPartAndATabFallsBackToIt) {
    const std::string form = textFieldsOnly();
    const auto prepared = prepare(form);
    ASSERT_TRUE(prepared);
    EXPECT_GE(prepared->fields().size(), 10u);
    for (int row = 1; row <= 4; ++row) {
        SCOPED_TRACE(row);
        const auto invoice = prepared->invoice(textsOf(*prepared, row));
        if (row == 3) {
            EXPECT_FALSE(invoice) << "a tab becomes a w:tab of its own";
            continue;
        }
        ASSERT_TRUE(invoice);
        expectSameParts(*invoice, filledByWord(form, row));
    }
    // The values reached the invoices, escaped as the XML needs it, a lone blank kept.
    const auto first = ooxml::Package::fromBytes(*prepared->invoice(textsOf(*prepared, 1)));
    const std::string document = first->bytes("word/document.xml");
    EXPECT_NE(document.find("<w:t>Müller &amp; Söhne &lt;AG&gt; \"Zürich\" 'Ost'</w:t>"), std::string::npos);
    EXPECT_NE(document.find("<w:t>Bahnhofstrasse  1</w:t>"), std::string::npos);
    const auto second = ooxml::Package::fromBytes(*prepared->invoice(textsOf(*prepared, 2)));
    EXPECT_NE(second->bytes("word/document.xml").find("<w:t xml:space=\"preserve\"> </w:t>"),
              std::string::npos);
}

TEST_F(PreparedFormTest, AFormWithTheQRCodeOrPaymentPartIsNotPrepared) {
    EXPECT_FALSE(prepare(ControlFile::sampleForm()));
    // Nothing of the attempt is left beside the form.
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.path()), fs::directory_iterator()), 1);
}

} // namespace
} // namespace wordbm::testing
