// Invoices joined from the prepared form against the same invoices filled through the embedded word
// processor, part by part: the sample form with its text fields only, and the whole sample form with
// its QR payment part and code.
#include "engine/merge/PreparedForm.h"

#include "ControlFile.h"
#include "data/CSVfile.h"
#include "data/KnownFields.h"
#include "engine/merge/BookmarkFiller.h"
#include "engine/merge/PreparedForms.h"
#include "engine/ooxml/DocxApplication.h"
#include "engine/ooxml/Package.h"
#include "engine/slip/SlipFit.h"
#include "engine/slip/modESQR.h"
#include "engine/word/Bookmarks.h"
#include "engine/word/Document.h"
#include "engine/word/Documents.h"
#include "engine/word/WordConstants.h"
#include "kit/ScriptedUserInterface.h"
#include "kit/TempDir.h"
#include "qrbill/QRCoder.h"
#include "qrbill/QRImage.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <set>

namespace wordbm::testing {
namespace {

namespace fs = std::filesystem;

class PreparedFormTest : public ::testing::Test {
protected:
    PreparedFormTest() { known.FieldsBESR(); }

    void use(const ControlFile& control) {
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

    std::unique_ptr<PreparedForm> prepare(const std::string& form, BookmarkFiller& with, int row = 1) {
        const auto word = ooxml::DocxApplication::create();
        return PreparedForm::make(*word, form, known, with, folder.path().string(), row);
    }
    std::unique_ptr<PreparedForm> prepare(const std::string& form) { return prepare(form, filler); }

    // The invoice of `row` as the merge run makes it through the word processor.
    std::string filledByWord(const std::string& form, int row) { return filledByWord(form, row, filler); }
    std::string filledByWord(const std::string& form, int row, BookmarkFiller& with) {
        const auto word = ooxml::DocxApplication::create();
        const word::DocumentPtr doc = word->Documents()->Open(form);
        EXPECT_TRUE(with.fill(*word, *doc, row).empty());
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
    ScriptedUserInterface ui;
    modESQR slip{ui, image, WORDBM_SLIP_IMAGE_DIR};
    BookmarkFiller slipFiller{known, data, coder, image, &slip, {}};
};

// Values a form must show exactly as the control file holds them: markup characters, blanks
// inside, an empty value (typed as one blank), and one the word processor must type (a tab).
ControlFile awkwardTexts() {
    ControlFile control({1, 2, 3, 4});
    control.set(1, "KliAdr1", "Müller & Söhne <AG> \"Zürich\" 'Ost'");
    control.set(1, "KliAdr2", "Bahnhofstrasse  1");
    control.set(2, "KliAdr1", "");
    control.set(3, "KliAdr1", "Meier\tund Co");
    return control;
}

void expectSameParts(const std::string& joined, const std::string& byWord) {
    const auto ours = ooxml::Package::fromBytes(joined);
    const auto theirs = ooxml::Package::open(byWord);
    ASSERT_EQ(ours->partNames(), theirs->partNames());
    for (const std::string& part : theirs->partNames()) {
        EXPECT_EQ(ours->bytes(part), theirs->bytes(part)) << part;
    }
}

TEST_F(PreparedFormTest, InvoicesAreTheWordProcessorsPartByPartAndATabFallsBackToIt) {
    use(awkwardTexts());
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

std::string documentOf(const std::string& invoice) {
    return ooxml::Package::fromBytes(invoice)->bytes("word/document.xml");
}

// Rows of the sample run as billing offices send them: addresses of several lines in the slip,
// umlauts and markup, a message that fits its box and one that must be shortened, a debtor
// address line too long for its box, and rows whose blank values change the slip's shape.
ControlFile slipRows() {
    ControlFile control({1, 2, 3, 4, 5, 6, 7, 8});
    control.set(2, "KliAdr1", "Müller & Söhne <AG> \"Zürich\"");
    control.set(2, "KliAdr2", "Chemin des Pâquerettes  3");
    control.set(2, "Referenz", "Jahresabschluss für Bäckerei & Konditorei");
    control.set(3, "Referenz",
                "Rechnung für die Buchhaltung des ganzen Jahres 2025 samt Abschluss, "
                "Steuererklärung, Lohnbuchhaltung, Beratung in allen Fragen der Mehrwertsteuer, "
                "Vertretung vor den Steuerbehörden und Schlussbesprechung");
    control.set(4, "KliAdr2",
                "Zweigniederlassung Ostschweiz der Treuhand- und Revisionsgesellschaft "
                "Sonnenberg AG, Abteilung Buchhaltung");
    control.set(5, "BesrRefNr", "");
    for (const char* line : {"KliAdr1", "KliAdr2", "KliAdr3", "KliAdr4", "KliAdr5"}) {
        control.set(6, line, "");
    }
    control.set(7, "BesrBet", "");
    control.set(7, "Referenz", "");
    return control;
}

TEST_F(PreparedFormTest, InvoicesWithTheQRSlipAreTheWordProcessorsPartByPart) {
    use(slipRows());
    const std::string form = ControlFile::sampleForm();
    const auto prepared = prepare(form, slipFiller, 1);
    ASSERT_TRUE(prepared);
    EXPECT_FALSE(prepared->invoice(textsOf(*prepared, 1))) << "the slip needs its row";
    int joined = 0;
    for (int row = 1; row <= 8; ++row) {
        SCOPED_TRACE(row);
        // Each row against the form prepared for its own shape.
        const bool sameShape = slipFiller.slipShape(row) == prepared->shape();
        const auto own = sameShape ? nullptr : prepare(form, slipFiller, row);
        ASSERT_TRUE(sameShape || own);
        const PreparedForm& serving = own ? *own : *prepared;
        ASSERT_EQ(serving.shape(), slipFiller.slipShape(row));
        const auto invoice = serving.invoiceOf(slipFiller, row);
        const std::string byWord = filledByWord(form, row, slipFiller);
        if (row == 3 || row == 4) {
            EXPECT_FALSE(invoice) << "the word processor shortens the text to fit its box";
            EXPECT_NE(ooxml::Package::open(byWord)->bytes("word/document.xml").find(SlipFit::Ellipsis),
                      std::string::npos);
            continue;
        }
        ASSERT_TRUE(invoice);
        expectSameParts(*invoice, byWord);
        ++joined;
        if (own) {
            EXPECT_FALSE(prepared->invoiceOf(slipFiller, row)) << "a slip of another shape";
        }
    }
    EXPECT_EQ(joined, 6);
    // The rows' own values and QR codes reached the invoices.
    const std::string second = documentOf(*prepared->invoiceOf(slipFiller, 2));
    // The debtor's address as the QR-bill data gives it, one line below the other.
    EXPECT_NE(second.find("<w:t>Müller &amp; Söhne &lt;AG&gt; \"Zürich"), std::string::npos);
    EXPECT_NE(second.find("</w:t><w:br/><w:t>1004 Lausanne</w:t><w:br/>"), std::string::npos);
    EXPECT_NE(second.find("<w:t>Jahresabschluss für Bäckerei &amp; Konditorei</w:t>"), std::string::npos);
    const auto first = ooxml::Package::fromBytes(*prepared->invoiceOf(slipFiller, 1));
    const auto other = ooxml::Package::fromBytes(*prepared->invoiceOf(slipFiller, 2));
    std::vector<std::string> pictures;
    for (const std::string& part : first->partNames()) {
        if (part.ends_with(".png") && first->bytes(part) != other->bytes(part)) {
            pictures.push_back(part);
        }
    }
    EXPECT_EQ(pictures.size(), 1u) << "one QR code per invoice";
}

// The run prepares the form once for each shape of slip among its rows, up to a few, and once for
// all rows when the form has no slip to fill.
TEST_F(PreparedFormTest, TheRunPreparesTheFormOncePerShapeOfSlip) {
    use(slipRows());
    const std::vector<std::int32_t> rows{1, 2, 3, 4, 5, 6, 7, 8};
    std::set<std::string> shapes;
    for (const std::int32_t row : rows) {
        shapes.insert(slipFiller.slipShape(row));
    }
    ASSERT_GE(shapes.size(), 3u);
    const auto word = ooxml::DocxApplication::create();
    const auto forms = PreparedForms::make(*word, ControlFile::sampleForm(), known, slipFiller,
                                           folder.path().string(), rows);
    ASSERT_TRUE(forms);
    std::set<const PreparedForm*> serving;
    for (const std::int32_t row : rows) {
        SCOPED_TRACE(row);
        const PreparedForm* form = forms->formFor(slipFiller, row);
        ASSERT_TRUE(form);
        EXPECT_EQ(form->shape(), slipFiller.slipShape(row));
        EXPECT_EQ(form, forms->find(slipFiller.slipShape(row)));
        serving.insert(form);
    }
    EXPECT_EQ(serving.size(), std::min(shapes.size(), PreparedForms::MostShapes));

    const auto textOnly =
        PreparedForms::make(*word, textFieldsOnly(), known, slipFiller, folder.path().string(), rows);
    ASSERT_TRUE(textOnly);
    const PreparedForm* first = textOnly->formFor(slipFiller, 1);
    ASSERT_TRUE(first);
    EXPECT_EQ(first->shape(), "");
    for (const std::int32_t row : rows) {
        EXPECT_EQ(textOnly->formFor(slipFiller, row), first);
    }
}

// Without a slip builder the merge leaves the slip's placeholders as they are, and so does the
// prepared form.
TEST_F(PreparedFormTest, WithoutTheSlipBuilderTheSlipIsLeftAsItIs) {
    use(awkwardTexts());
    const std::string form = ControlFile::sampleForm();
    const auto prepared = prepare(form);
    ASSERT_TRUE(prepared);
    // Nothing of the preparation is left beside the control file.
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.path()), fs::directory_iterator()), 1);
    EXPECT_EQ(prepared->shape(), "");
    const auto invoice = prepared->invoiceOf(filler, 2);
    ASSERT_TRUE(invoice);
    expectSameParts(*invoice, filledByWord(form, 2));
    EXPECT_NE(documentOf(*invoice).find("<w:t>ESQRKontoAn</w:t>"), std::string::npos);
}

} // namespace
} // namespace wordbm::testing
