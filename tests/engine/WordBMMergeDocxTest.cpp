// The merge run on the sample form through the embedded word processor: the invoices' contents,
// repeated names, side-by-side invoices, a failing save, and PDF files through LibreOffice: their QR
// codes read back by the run itself, their bodies kept off the payment part.
#include "ControlFile.h"
#include "EngineFixture.h"
#include "data/KnownFields.h"
#include "engine/ooxml/DocxApplication.h"
#include "engine/ooxml/Package.h"
#include "engine/slip/modESQR.h"
#include "engine/word/Bookmarks.h"
#include "engine/word/Document.h"
#include "engine/word/Documents.h"
#include "engine/word/Range.h"
#include "engine/word/Selection.h"
#include "engine/word/Shapes.h"
#include "engine/word/WordConstants.h"
#include "qrbill/PrintedCode.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <memory>
#include <poppler-document.h>
#include <poppler-page.h>

namespace wordbm::testing {
namespace {

namespace fs = std::filesystem;

// Field -> text of its bookmarks, joined by "|" where a field has several.
std::map<std::string, std::string> bookmarkTexts(const std::string& path) {
    KnownFields fields;
    fields.FieldsBESR();
    const auto word = ooxml::DocxApplication::create();
    const auto doc = word->Documents()->Open(path);
    std::map<std::string, std::string> texts;
    const auto bookmarks = doc->Bookmarks();
    for (int i = 1; i <= bookmarks->Count(); ++i) {
        const auto bookmark = bookmarks->Item(i);
        auto& text = texts[fields.BookmarkFieldGet(bookmark->Name())];
        text += (text.empty() ? "" : "|") + bookmark->Range()->Text();
    }
    word->Quit();
    return texts;
}

// A word of a PDF with its box in millimetres from the page's top left.
struct PdfWord {
    std::string text;
    int page = 0;
    double left = 0, top = 0, right = 0, bottom = 0;
};

std::vector<PdfWord> pdfWords(const std::string& pdf) {
    constexpr double MmPerPoint = 25.4 / 72;
    const std::unique_ptr<poppler::document> document(poppler::document::load_from_file(pdf));
    std::vector<PdfWord> words;
    for (int index = 0; document && index < document->pages(); ++index) {
        const std::unique_ptr<poppler::page> page(document->create_page(index));
        for (const poppler::text_box& box : page->text_list()) {
            const poppler::rectf r = box.bbox();
            const poppler::byte_array utf8 = box.text().to_utf8();
            words.push_back({std::string(utf8.begin(), utf8.end()), index + 1, r.left() * MmPerPoint,
                             r.top() * MmPerPoint, r.right() * MmPerPoint, r.bottom() * MmPerPoint});
        }
    }
    return words;
}

class DocxMerge : public EngineTest {
protected:
    void SetUp() override {
        // The sample form carries the QR payment part; its placeholders are filled as in the program.
        engine->SlipBuilder(std::make_unique<modESQR>(ui, engine->QRComponent()));
        forms_ = baseFolder() + "/forms";
        out_ = baseFolder() + "/out";
        fs::create_directory(out_);
    }
    void start(const ControlFile& data, const std::string& mask = "\\&K&-&R&.&E&") {
        data.write(forms_ + "/Lauf.csv");
        engine->Template(mask.starts_with("\\") ? out_ + mask : mask);
        engine->mfWBM_OpenCSVDoc(forms_ + "/Lauf.csv");
        ASSERT_TRUE(open(copyIn(ControlFile::sampleForm(), "Rechnung.docx")));
    }
    void merge(const MergeChoices& choices = {}) {
        ui.mergeAnswers = {choices};
        engine->mfWBM_Merge();
        ASSERT_EQ(ui.results.size(), 1u);
    }
    std::string invoice(const ControlFile& data, int line, const std::string& extension = ".docx") const {
        return out_ + "/" + data.get(line, "KliKonto") + "-0" + data.get(line, "RgNummer") + extension;
    }
    void expectInvoiceOf(const ControlFile& data, int line) {
        const auto texts = bookmarkTexts(invoice(data, line));
        for (const char* field : {"KliAdr1", "KliAdr2", "KliAdr3", "KliAdr4", "RgDatum", "RgNummer",
                                  "KliKonto", "KliGebu", "KliMWST", "KliTot2", "RgDue", "MWSTID"}) {
            EXPECT_EQ(texts.at(field), data.get(line, field)) << field << " of line " << line;
        }
        EXPECT_EQ(texts.at("GeschTxt"), data.get(line, "GeschTxt") + "|" + data.get(line, "GeschTxt"));
        EXPECT_EQ(texts.at("KliAdr5"), " ");
    }
    const ResultList& result() const { return ui.results.back(); }

    std::string forms_;
    std::string out_;
};

TEST_F(DocxMerge, EveryInvoiceHoldsItsRowsValuesAndItsQRCode) {
    const ControlFile data({1, 2, 3});
    start(data);

    merge();

    for (int line = 1; line <= 3; ++line) {
        expectInvoiceOf(data, line);
        const auto package = ooxml::Package::open(invoice(data, line));
        bool picture = false;
        for (const auto& part : package->partNames()) {
            picture = picture || part.starts_with("word/media/");
        }
        EXPECT_TRUE(picture) << line;
    }
    EXPECT_EQ(result().total, 3);
    EXPECT_EQ(result().ok, 3);
    EXPECT_TRUE(ui.boxes.empty());
    // The working form was never saved, and it is the engine's document again.
    EXPECT_EQ(readBytes(workFolder() + "/Rechnung.docx"), readBytes(ControlFile::sampleForm()));
    EXPECT_EQ(engine->Doc()->FullName(), workFolder() + "/Rechnung.docx");
    EXPECT_EQ(bookmarkTexts(workFolder() + "/Rechnung.docx").at("RgNummer"), "[RgNummer]");
    expectOriginalsUntouched();
}

TEST_F(DocxMerge, ARepeatedNameNeverReplacesAnInvoiceOfTheSameRun) {
    const ControlFile data = ControlFile({1, 2}).set(2, "KliKonto", "10400000");
    start(data, "\\&K&.&E&");

    merge();

    EXPECT_EQ(bookmarkTexts(out_ + "/10400000.docx").at("RgNummer"), "24100");
    EXPECT_EQ(result().lines.back(), "**Dateiname schon vergeben, nicht gespeichert->" + out_ + "/10400000");
    EXPECT_EQ(result().errors, 1);
}

TEST_F(DocxMerge, AnInvoiceIsNeverSavedOverTheForm) {
    const ControlFile data({1});
    start(data, forms_ + "\\Rechnung.&E&");

    merge();

    EXPECT_EQ(result().lines, std::vector<std::string>{"**Dateiname schon vergeben, nicht gespeichert->" +
                                                       forms_ + "/Rechnung"});
    expectOriginalsUntouched();
}

TEST_F(DocxMerge, AFailedSaveIsShownAndTheNextInvoiceStartsFromTheEmptyForm) {
    const ControlFile data({1, 2});
    start(data);
    fs::create_directories(invoice(data, 1) + "/in-the-way");

    merge();

    ASSERT_EQ(ui.boxes.size(), 1u);
    EXPECT_TRUE(ui.boxes[0].text.ends_with("\r\nDie Rechnung wurde nicht gespeichert!")) << ui.boxes[0].text;
    EXPECT_EQ(ui.boxes[0].buttons, msgbox::Stop);
    expectInvoiceOf(data, 2);
    EXPECT_EQ(result().errors, 1);
    EXPECT_EQ(result().ok, 1);
}

TEST_F(DocxMerge, SideBySideInvoicesEqualTheOnesMadeOneAfterAnother) {
    ControlFile data({1, 2, 3, 4, 5, 6, 7});
    start(data);
    engine->MergeJobs(2);

    merge(MergeChoices{false, false, false, true, false, false});

    const ResultList parallel = result();
    for (int line = 1; line <= data.lines(); ++line) {
        expectInvoiceOf(data, line);
    }
    ui.results.clear();
    engine->MergeJobs(1);
    merge(MergeChoices{false, false, false, true, false, false});
    EXPECT_EQ(parallel.lines, result().lines);
    EXPECT_EQ(parallel.total, 7);
    EXPECT_EQ(parallel.ok, 7);
    EXPECT_EQ(engine->Doc()->FullName(), workFolder() + "/Rechnung.docx");
}

// The run is joined from the form's file only while the open form has no edit that is not saved:
// the first invoice is filled from the open form, with its edit.
TEST_F(DocxMerge, AnEditNotYetSavedReachesTheFirstInvoice) {
    const ControlFile data({1, 2});
    start(data);
    engine->Doc()->Content()->InsertAfter("Nachtrag vor dem Lauf");

    merge(MergeChoices{false, false, false, true, false, false});

    expectInvoiceOf(data, 1);
    const auto invoice1 = ooxml::DocxApplication::create()->Documents()->Open(invoice(data, 1));
    EXPECT_NE(invoice1->Content()->Text().find("Nachtrag vor dem Lauf"), std::string::npos);
    EXPECT_EQ(result().ok, 2);
}

// The one test here that needs LibreOffice: two conversions.
TEST_F(DocxMerge, DeletingWithPdfLeavesOnlyThePdfFiles) {
    const ControlFile data({1, 2});
    start(data);

    merge(MergeChoices{false, true, false, false, false, true});

    for (int line = 1; line <= 2; ++line) {
        EXPECT_FALSE(fs::exists(invoice(data, line)));
        EXPECT_EQ(readBytes(invoice(data, line, ".pdf")).substr(0, 5), "%PDF-") << line;
    }
    EXPECT_TRUE(ui.boxes.empty()) << ui.boxes.front().text;
    EXPECT_EQ(result().ok, 2);
}

// An invoice that cannot be saved (a folder stands in its place) has no PDF either, and says so;
// the next invoice is made as usual.
TEST_F(DocxMerge, AnInvoiceThatCannotBeSavedGetsNoPdfAndSaysSo) {
    const ControlFile data({1, 2});
    start(data);
    fs::create_directories(invoice(data, 1) + "/besetzt");

    merge(MergeChoices{false, true, false, true, false, false});

    ASSERT_EQ(ui.boxes.size(), 2u);
    EXPECT_NE(ui.boxes[0].text.find("Die Rechnung wurde nicht gespeichert!"), std::string::npos);
    EXPECT_EQ(ui.boxes[1].text,
              "Die Rechnung ist nicht gespeichert.\r\nDie PDF-Datei wurde nicht generiert!");
    EXPECT_FALSE(fs::exists(invoice(data, 1, ".pdf")));
    EXPECT_EQ(readBytes(invoice(data, 2, ".pdf")).substr(0, 5), "%PDF-");
    EXPECT_EQ(result().errors, 1);
    EXPECT_EQ(result().ok, 1);
}

// A shape laid over the payment part's code after the slip was built, as a careless edit of the
// form might: every invoice still gets its PDF, and the run itself finds that the code is lost.
TEST_F(DocxMerge, ACodeThatCannotBeReadBackFailsItsInvoice) {
    const std::string covered = forms_ + "/Verdeckt.docx";
    {
        const auto editor = ooxml::DocxApplication::create();
        const auto doc = editor->Documents()->Open(ControlFile::sampleForm());
        const float mm = 72 / 25.4F;
        const auto canvas =
            doc->Shapes()->AddCanvas(80 * mm, 220 * mm, 25 * mm, 25 * mm, editor->Selection()->Range());
        canvas->CanvasItems()->AddTextbox(1, 0, 0, 25 * mm, 25 * mm);
        doc->SaveAs2(covered);
        editor->Quit();
    }
    const ControlFile data({1, 2});
    data.write(forms_ + "/Lauf.csv");
    engine->Template(out_ + "\\&K&-&R&.&E&");
    engine->mfWBM_OpenCSVDoc(forms_ + "/Lauf.csv");
    ASSERT_TRUE(open(copyIn(covered, "Verdeckt.docx")));
    engine->MergeJobs(2);

    merge(MergeChoices{false, true, false, true, false, false});

    EXPECT_EQ(result().errors, 2);
    EXPECT_EQ(result().ok, 0);
    for (int line = 1; line <= 2; ++line) {
        EXPECT_TRUE(fs::exists(invoice(data, line, ".pdf")));
        const auto shown =
            std::find(result().lines.begin(), result().lines.end(), "  " + invoice(data, line, ""));
        ASSERT_NE(shown, result().lines.end()) << ::testing::PrintToString(result().lines);
        ASSERT_NE(shown + 1, result().lines.end());
        EXPECT_EQ(shown[1], std::string("    QR-Code: ") + PrintedCode::NoCode);
    }
}

// An invoice whose text is longer than the page above the slip: the rest goes on the next page,
// and not one of its words lies on the payment part or the separation text.
TEST_F(DocxMerge, ALongInvoiceTextFlowsOnToTheNextPageInsteadOfUnderTheSlip) {
    std::string mandate;
    for (int item = 1; item <= 40; ++item) {
        mandate += "Mandatsleistung" + std::to_string(item) + " Abschluss und Steuern, ";
    }
    const ControlFile data = ControlFile({1}).set(1, "GeschTxt", mandate);
    start(data);

    merge(MergeChoices{false, true, false, true, false, false});

    EXPECT_EQ(result().ok, 1) << ::testing::PrintToString(result().lines);
    const auto words = pdfWords(invoice(data, 1, ".pdf"));
    const auto body = [](const PdfWord& found) {
        return found.text.starts_with("Mandatsleistung") || found.text == "Freundliche" ||
               found.text == "Bitte" || found.text == "Mehrwertsteuer" || found.text == "Auslagen";
    };
    int bodyOnFirstPage = 0;
    for (const PdfWord& found : words) {
        if (found.page == 1 && body(found)) {
            ++bodyOnFirstPage;
            // The separation text's box begins 182 mm from the top.
            EXPECT_LT(found.bottom, 182.0) << found.text << " at " << found.top << " mm";
        }
    }
    EXPECT_GT(bodyOnFirstPage, 10);
    const auto closing = std::find_if(words.begin(), words.end(),
                                      [](const PdfWord& found) { return found.text == "Freundliche"; });
    ASSERT_NE(closing, words.end());
    EXPECT_GE(closing->page, 2);
}

} // namespace
} // namespace wordbm::testing
