// The merge run and the file-name test on small forms: the run's order, its questions, its
// failures and its result list.
#include "ControlFile.h"
#include "EngineFixture.h"
#include "engine/ports/SlipPort.h"
#include "engine/word/Application.h"
#include "engine/word/Bookmarks.h"
#include "engine/word/WordConstants.h"

#include <algorithm>
#include <filesystem>

namespace wordbm::testing {
namespace {

using Box = ScriptedUserInterface::Box;
namespace fs = std::filesystem;

const std::string Refusal = FaultyWord::Refusal;

TestForm invoiceForm() {
    TestForm form;
    form.text("An ").bookmark("kdx6_KliName_000001", "[KliName]").text(" ");
    form.bookmark("kdx6_KliAdr5_000002", "[KliAdr5]")
        .text(" Nr ")
        .bookmark("kdx5_RgNummer_123456", "[RgNummer]");
    // An old number-first name is read only once the analysis has renamed it.
    form.text(" ").bookmark("kdx5_123456_RgDatum", "[RgDatum]").bookmark("Fremd", "x").text("\r");
    return form;
}

class Merge : public EngineTest {
protected:
    void SetUp() override {
        out_ = baseFolder() + "/out";
        fs::create_directory(out_);
    }
    // Opens the control file and the form, with a mask that writes into the out folder.
    void start(const ControlFile& data, const TestForm& testForm = invoiceForm(),
               const std::string& mask = "\\&K&-&R&.&E&") {
        data.write(baseFolder() + "/forms/Lauf.csv");
        engine->Template(out_ + mask);
        engine->mfWBM_OpenCSVDoc(baseFolder() + "/forms/Lauf.csv");
        ASSERT_TRUE(open(form("Rechnung.docx", testForm)));
    }
    std::string name(const std::string& account, const std::string& number) const {
        return out_ + "/" + account + "-0" + number;
    }
    const ResultList& result() {
        EXPECT_EQ(ui.results.size(), 1u);
        return ui.results.back();
    }

    std::string out_;
};

TEST_F(Merge, TestRunListsTheNamesWithoutDocumentsOrDialogs) {
    start(ControlFile({1, 18, 2}));

    engine->mfWBM_Test();

    EXPECT_EQ(result().lines,
              (std::vector<std::string>{"  " + name("10400000", "24100"), "  " + name("10400017", "24101")}));
    EXPECT_TRUE(result().testOnly);
    EXPECT_EQ(result().total, 2);
    EXPECT_EQ(result().ok, 2);
    EXPECT_EQ(ui.mergeDialogs, 0);
    EXPECT_TRUE(ui.boxes.empty());
    EXPECT_EQ(app().opened, 1);
    EXPECT_EQ(mainText(), "An [KliName] [KliAdr5] Nr [RgNummer] [RgDatum]x\r");
    // The reader counts the empty piece after the last line end as a line.
    EXPECT_EQ(ui.progress.front(), "start Dateinamen testen 4");
    EXPECT_EQ(ui.progress.back(), "stop");
    // Words for each invoice, counted among the invoices rather than the lines.
    const auto labels = std::count_if(ui.progress.begin(), ui.progress.end(),
                                      [](const std::string& entry) { return entry.starts_with("label "); });
    EXPECT_EQ(labels, 2);
    EXPECT_NE(
        std::find_if(ui.progress.begin(), ui.progress.end(),
                     [](const std::string& entry) { return entry.starts_with("label Rechnung 2 von 2"); }),
        ui.progress.end());
    expectOriginalsUntouched();
}

TEST_F(Merge, CancellingTheDialogMakesNothing) {
    start(ControlFile({1}));
    ui.mergeAnswers = {std::nullopt};

    engine->mfWBM_Merge();

    EXPECT_EQ(ui.mergeDialogs, 1);
    EXPECT_TRUE(ui.results.empty());
    EXPECT_EQ(app().opened, 1);
}

TEST_F(Merge, ADocumentClosedUnderTheEngineStopsTheCommandBeforeTheDialog) {
    start(ControlFile({1}));
    app().closeByHand();

    engine->mfWBM_Merge();

    EXPECT_EQ(ui.mergeDialogs, 0);
    EXPECT_TRUE(ui.results.empty());
}

TEST_F(Merge, EveryFailureIsShownAndTheRunGoesOnFromAFreshForm) {
    start(ControlFile({1, 2}));
    ui.mergeAnswers = {MergeChoices{true, true, false, false, false, true}};
    word.refused = {"SaveAs2", "ExportAsFixedFormat", "PrintOut"};

    engine->mfWBM_Merge();

    const std::vector<Box> perInvoice{
        {Refusal + "\r\nDie Rechnung wurde nicht gespeichert!", 16, "Word-Rechnungsformular"},
        {Refusal + "\r\nDie PDF-Datei wurde nicht generiert!", 16, "Word-Rechnungsformular"},
        {"Datei nicht gefunden\r\nDie Rechnung konnte nicht gelöscht werden!", 16, "Word-Rechnungsformular"}};
    std::vector<Box> expected = perInvoice;
    expected.insert(expected.end(), perInvoice.begin(), perInvoice.end());
    EXPECT_EQ(ui.boxes, expected);
    EXPECT_EQ(result().lines,
              (std::vector<std::string>{"  " + name("10400000", "24100"), "    Nicht gedruckt: " + Refusal,
                                        "  " + name("10400017", "24101"), "    Nicht gedruckt: " + Refusal}));
    EXPECT_EQ(result().errors, 2);
    EXPECT_FALSE(result().testOnly);
    // The filled form was closed unsaved each time, and opened anew for the next invoice (in the
    // session's instance: the run's attempt to prepare the form, refused its save, came after it).
    EXPECT_EQ(word.apps.front()->opened, 3);
    EXPECT_EQ(mainText(), "An [KliName] [KliAdr5] Nr [RgNummer] [RgDatum]x\r");
    EXPECT_EQ(readBytes(engine->WordWork()), readBytes(baseFolder() + "/forms/Rechnung.docx"));
    expectOriginalsUntouched();
}

// Opened again while still open, the filled form would come back as it is.
TEST_F(Merge, AnInvoiceThatWasNotSavedIsClosedBeforeTheFormIsOpenedAgain) {
    start(ControlFile({1, 2}));
    ui.mergeAnswers = {MergeChoices{}};
    word.refused = {"SaveAs2"};

    engine->mfWBM_Merge();

    EXPECT_EQ(result().errors, 2);
    EXPECT_EQ(app().opened, 3);
    EXPECT_EQ(app().closes, 2);
}

TEST_F(Merge, FillingTypesValuesAsTheyStandAndABlankForAnEmptyOne) {
    start(ControlFile({2}).set(1, "KliName", "Dubois & Co. <Genève>").set(1, "RgNummer", "0042"));

    engine->BookmarksFill(1);

    EXPECT_EQ(mainText(), "An Dubois & Co. <Genève>   Nr 0042 [RgDatum]x\r");
    EXPECT_TRUE(app().ScreenUpdating());
}

TEST_F(Merge, QRTextsComeFromTheRowsQRBillData) {
    TestForm qr;
    qr.bookmark("kdx6_Currency_000001", "[Currency]").text("|").bookmark("kdx6_Amount_000002", "[Amount]");
    qr.text("|").bookmark("kdx6_QRText_000003", "[QRText]").text("|");
    qr.bookmark("kdx6_ESQRMakeST_000004", "[ESQR]").text("\r");
    start(ControlFile({1}), qr);

    engine->BookmarksFill(1);

    const std::string text = mainText();
    // The payload's line ends are typed as paragraph marks.
    EXPECT_EQ(text.rfind("CHF|518  .  88|SPC\r0200\r1\rCH8530808000004512003\rS\r", 0), 0u) << text;
    EXPECT_NE(text.find("\rEPD|[ESQR]\r"), std::string::npos) << text;
}

class RecordingSlip : public SlipPort {
public:
    void Build(word::Application&, word::Document&, const SlipChoices&) override {}
    void Fill(word::Application&, word::Document&, word::Bookmark& placeholder, const std::string& field,
              const QRCoder&, std::int32_t row) override {
        calls.push_back(placeholder.Name() + " " + field + " " + std::to_string(row));
    }
    std::vector<std::string> calls;
};

TEST_F(Merge, SlipPlaceholdersGoToTheSlipBuilder) {
    TestForm slip = invoiceForm();
    slip.bookmark("kdx6_ESQRAmount_000009", "[Betrag]");
    start(ControlFile({1, 2}), slip);
    auto recorder = std::make_unique<RecordingSlip>();
    auto* calls = &recorder->calls;
    engine->SlipBuilder(std::move(recorder));

    engine->BookmarksFill(2);

    EXPECT_EQ(*calls, std::vector<std::string>{"kdx6_ESQRAmount_000009 ESQRAmount 2"});
}

TEST_F(Merge, OneMissingFolderLevelIsMadeAndTwoAreListedAsMissing) {
    start(ControlFile({1, 2}), invoiceForm(), "\\neu\\&K&.&E&");
    engine->mfWBM_Test();
    EXPECT_TRUE(fs::is_directory(out_ + "/neu"));
    EXPECT_EQ(result().lines.front(), "  " + out_ + "/neu/10400000");

    ui.results.clear();
    engine->Template(out_ + "\\a\\b\\&K&.&E&");
    engine->mfWBM_Test();

    EXPECT_EQ(result().lines, (std::vector<std::string>{"**Pfad nicht gefunden->" + out_ + "/a/b/10400000",
                                                        "**Pfad nicht gefunden->" + out_ + "/a/b/10400017"}));
    EXPECT_EQ(result().errors, 2);
    EXPECT_EQ(result().ok, 0);
    EXPECT_FALSE(fs::exists(out_ + "/a"));
}

TEST_F(Merge, RowsWithoutAnInvoiceDateGiveAnEmptyList) {
    start(ControlFile({18, 1}).set(2, "RgDatum", ""));

    engine->mfWBM_Test();

    EXPECT_TRUE(result().lines.empty());
    EXPECT_EQ(result().total, 0);
}

TEST_F(Merge, ARepeatedNameIsListedOnceAsTaken) {
    start(ControlFile({1, 2}).set(2, "RgNummer", "24100").set(2, "KliKonto", "10400000"));

    engine->mfWBM_Test();

    EXPECT_EQ(result().lines, (std::vector<std::string>{"  " + name("10400000", "24100"),
                                                        "**Dateiname schon vergeben, nicht gespeichert->" +
                                                            name("10400000", "24100")}));
    EXPECT_EQ(result().errors, 1);
}

TEST_F(Merge, QRBillWarningsAreListedOnlyForFormsWithQRData) {
    const ControlFile data = ControlFile({1}).set(1, "BankKto", "CH00 1234");
    start(data);
    engine->mfWBM_Test();
    EXPECT_EQ(result().lines.size(), 1u);

    TestForm withCode = invoiceForm();
    withCode.bookmark("kdx6_QRCode_000005", "[QR]");
    ui.results.clear();
    start(data, withCode);
    engine->mfWBM_Test();

    ASSERT_GT(result().lines.size(), 1u);
    EXPECT_EQ(result().lines[1].rfind("    QR-Rechnung: ", 0), 0u) << result().lines[1];
    EXPECT_EQ(result().errors, 0);
}

TEST_F(Merge, StoppingEndsTheRunBetweenTwoInvoices) {
    start(ControlFile({1, 2, 3}));
    ui.stopAtQuery = 2;

    engine->mfWBM_Test();

    EXPECT_EQ(result().lines,
              (std::vector<std::string>{"  " + name("10400000", "24100"), "**Abgebrochen vor Zeile 2"}));
    EXPECT_EQ(ui.progress.back(), "stop");
}

TEST_F(Merge, ClosingWordEndsTheSessionAfterTheLastInvoice) {
    start(ControlFile({1}));
    ui.mergeAnswers = {MergeChoices{false, false, false, true, true, false}};

    engine->mfWBM_Merge();

    EXPECT_FALSE(engine->Word());
    ASSERT_EQ(app().quits.size(), 1u);
    EXPECT_EQ(app().quits[0], ::wordbm::word::wd::wdDoNotSaveChanges);
    EXPECT_EQ(result().total, 1);
}

} // namespace
} // namespace wordbm::testing
