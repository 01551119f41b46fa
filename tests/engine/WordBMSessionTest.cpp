#include "EngineFixture.h"
#include "engine/ooxml/DocxApplication.h"
#include "engine/word/Document.h"
#include "engine/word/Documents.h"
#include "engine/word/Range.h"

#include <filesystem>

namespace wordbm {

// Readable failures: the box as {text, buttons, title}.
void PrintTo(const ScriptedUserInterface::Box& box, std::ostream* out) {
    *out << "{" << ::testing::PrintToString(box.text) << ", " << box.buttons << ", " << box.title << "}";
}

namespace testing {
namespace {

using Box = ScriptedUserInterface::Box;

TestForm letter() {
    return TestForm().text("Sehr geehrte ").mergeField("KliName").text("\r");
}

class Session : public EngineTest {};

TEST_F(Session, OpeningAMissingFormSaysSoAndKeepsTheSession) {
    ASSERT_TRUE(open(form("Rechnung.docx", letter())));
    const std::string missing = baseFolder() + "/forms/Fehlt.docx";

    EXPECT_FALSE(open(missing));

    EXPECT_EQ(ui.boxes.back(),
              (Box{missing + "\r\nDatei nicht gefunden!", 16, "Word-Rechnungsformular öffnen"}));
    EXPECT_EQ(word.apps.size(), 1u);
    EXPECT_TRUE(engine->CheckDoc());
}

TEST_F(Session, OpeningWorksOnACopyInTheWorkingFolder) {
    const std::string path = form("Rechnung.docx", letter());

    ASSERT_TRUE(open(path));

    const std::string working = workFolder() + "/Rechnung.docx";
    EXPECT_EQ(engine->WordWork(), working);
    EXPECT_EQ(doc().FullName(), working);
    EXPECT_EQ(readBytes(working), readBytes(path));
    ASSERT_TRUE(ui.wordDoc);
    EXPECT_EQ(ui.wordDoc->original, path);
    EXPECT_EQ(ui.wordDoc->working, working);
    EXPECT_TRUE(app().Visible());
    EXPECT_TRUE(ui.boxes.empty());
}

TEST_F(Session, AFormTheWordProcessorRefusesIsReportedAndForgotten) {
    const std::string path = original("Kaputt.docx"); // no Word document in it

    EXPECT_FALSE(open(path));

    const std::string working = workFolder() + "/Kaputt.docx";
    EXPECT_EQ(ui.boxes.back(),
              (Box{"Fehler beim Öffnen von\r\n" + working +
                       "\r\nDie Datei ist kein gültiges Word-Dokument (beschädigtes ZIP-Archiv).\r\n",
                   16, "Word-Rechnungsformular öffnen"}));
    EXPECT_FALSE(ui.wordDoc);
    EXPECT_FALSE(engine->Word());
    EXPECT_FALSE(engine->CheckDoc());
}

TEST_F(Session, AWordProcessorThatCannotStartIsReported) {
    word.refuseStart = true;
    EXPECT_FALSE(open(form("Rechnung.docx", letter())));
    EXPECT_NE(ui.boxes.back().text.find("Word.Application kann nicht erstellt werden."), std::string::npos);
}

TEST_F(Session, OpeningASecondFormEndsTheFirstSessionAfterAsking) {
    ASSERT_TRUE(open(form("A.docx", letter())));
    ui.answers = {msgbox::Yes};

    ASSERT_TRUE(open(form("B.docx", letter())));

    EXPECT_EQ(ui.boxes.back(), (Box{"Word schliessen?", 36, "Word-Rechnungsformular"}));
    ASSERT_EQ(word.apps.size(), 2u);
    EXPECT_EQ(word.apps[0]->quits, std::vector<std::optional<int>>{std::nullopt});
    EXPECT_EQ(doc().FullName(), workFolder() + "/B.docx");
}

TEST_F(Session, DecliningToCloseWordIsNeverAskedAgain) {
    ASSERT_TRUE(open(form("A.docx", letter())));
    ui.answers = {msgbox::No};

    EXPECT_FALSE(engine->mfWBM_Quit());
    ASSERT_TRUE(open(form("B.docx", letter())));
    EXPECT_FALSE(engine->mfWBM_Quit());

    EXPECT_EQ(ui.texts(), std::vector<std::string>{"Word schliessen?"});
    EXPECT_TRUE(word.apps[0]->quits.empty());
    EXPECT_TRUE(word.apps[1]->quits.empty());
    EXPECT_EQ(ui.unanswered, 0);
}

TEST_F(Session, AForcedQuitDiscardsChangesWithoutAsking) {
    ASSERT_TRUE(open(form("Rechnung.docx", letter())));
    EXPECT_TRUE(engine->mfWBM_Quit(true));
    EXPECT_EQ(app().quits, std::vector<std::optional<int>>{0});
    EXPECT_TRUE(ui.boxes.empty());
    EXPECT_FALSE(ui.wordDoc);
    EXPECT_EQ(engine->WordWork(), "");
}

TEST_F(Session, ADocumentClosedByHandFailsTheCheckQuietly) {
    ASSERT_TRUE(open(form("Rechnung.docx", letter())));
    app().closeByHand();

    EXPECT_FALSE(engine->CheckDoc(true));
    engine->mfWBM_Analyze();

    EXPECT_TRUE(ui.boxes.empty());
    EXPECT_FALSE(ui.wordDoc);
}

TEST_F(Session, AFormClosedByHandWhileAnotherDocumentStaysOpenIsReportedOnce) {
    ASSERT_TRUE(open(form("Rechnung.docx", letter())));
    app().closeByHand();
    app().Documents()->Open(form("Brief.docx", letter()));

    EXPECT_FALSE(engine->CheckDoc(true));
    engine->mfWBM_Analyze();

    EXPECT_EQ(ui.boxes,
              (std::vector<Box>{{"Das Dokument ist nicht mehr geöffnet.", 64, "Word-Rechnungsformular"}}));
    EXPECT_FALSE(ui.wordDoc);
}

TEST_F(Session, AWordProcessorGoneUnderTheEngineIsReportedWhereMessagesAreWanted) {
    ASSERT_TRUE(open(form("Rechnung.docx", letter())));
    app().crash();

    EXPECT_FALSE(engine->CheckDoc(false));
    EXPECT_TRUE(ui.boxes.empty());
    engine->mfWBM_Analyze();

    EXPECT_EQ(ui.texts(),
              std::vector<std::string>{
                  "Der Remoteprozeduraufruf ist fehlgeschlagen.\r\nWord kann nicht angesprochen werden!"});
    EXPECT_EQ(ui.boxes[0].buttons, 64);
    EXPECT_FALSE(ui.wordDoc);
}

TEST_F(Session, TheWindowsTimerReportsAWordProcessorClosedByHandOnce) {
    ASSERT_TRUE(open(form("Rechnung.docx", letter())));
    engine->OnEvent(WindowEvent::Timer, {});
    EXPECT_TRUE(ui.boxes.empty());

    app().crash();
    engine->OnEvent(WindowEvent::Timer, {});
    engine->OnEvent(WindowEvent::Timer, {});

    ASSERT_EQ(ui.boxes.size(), 1u);
    EXPECT_EQ(ui.boxes[0].text.substr(ui.boxes[0].text.find("\r\n")),
              "\r\nWord kann nicht angesprochen werden!");
    EXPECT_FALSE(ui.wordDoc);
}

TEST_F(Session, AnEmptyMessageBoxTitleBecomesTheWindowCaption) {
    engine->MyMsgBox("x", 64);
    EXPECT_EQ(ui.boxes.back().title, "WordBM");
}

class CopyBack : public EngineTest {
protected:
    void SetUp() override {
        path = form("Rechnung.docx", TestForm().text("Alter Text\r"));
        ASSERT_TRUE(open(path));
        working = engine->WordWork();
        doc().Range(0, 5)->Text("Neuer");
    }
    std::string path;
    std::string working;
};

TEST_F(CopyBack, ClosingWithTwoConfirmationsSavesAndCopiesTheFormBack) {
    ui.answers = {msgbox::Yes, msgbox::Yes, msgbox::Yes};

    engine->mfWBM_OpenWordDoc("");

    EXPECT_EQ(ui.boxes,
              (std::vector<Box>{
                  {"Word-Rechnungsdatei wird gespeichert.\r\nWord wird geschlossen.\r\n"
                   "Word-Rechnungsdatei wird zurückkopiert.\r\nWeiterfahren?",
                   36, "Zurückkopieren"},
                  {"Word-Rechnungsformular zurückkopieren?\r\nArbeitsdatei:\r\n" + working +
                       "\r\nOriginaldatei:\r\n" + path,
                   36, "Zurückkopieren"},
                  {"Die Datei wirklich überschreiben?\r\nOriginaldatei:\r\n" + path, 36, "Überschreiben"},
                  {"Kopiert", 64, "Originaldatei zurückkopieren"},
              }));
    const auto reader = ooxml::DocxApplication::create();
    EXPECT_EQ(reader->Documents()->Open(path)->Content()->Text(), "Neuer Text\r");
    reader->Quit();
    EXPECT_EQ(app().quits, std::vector<std::optional<int>>{0});
    EXPECT_FALSE(engine->Word());
}

TEST_F(CopyBack, NoBeforeClosingChangesNothing) {
    ui.answers = {msgbox::No};
    engine->mfWBM_OpenWordDoc("");
    EXPECT_EQ(app().saves, 0);
    EXPECT_TRUE(engine->CheckDoc());
    expectOriginalsUntouched();
}

TEST_F(CopyBack, NoToEitherCopyQuestionLeavesTheOriginal) {
    for (int declined = 1; declined <= 2; ++declined) {
        SCOPED_TRACE(declined);
        if (declined > 1) {
            ASSERT_TRUE(open(path));
        }
        ui.boxes.clear();
        ui.answers = {msgbox::Yes};
        ui.answers.insert(ui.answers.end(), static_cast<std::size_t>(declined - 1), msgbox::Yes);
        ui.answers.push_back(msgbox::No);

        engine->mfWBM_OpenWordDoc("");

        EXPECT_EQ(ui.boxes.size(), static_cast<std::size_t>(declined + 1));
        EXPECT_EQ(word.apps.back()->saves, 1);
        EXPECT_FALSE(engine->Word());
        expectOriginalsUntouched();
    }
}

TEST_F(CopyBack, AFailingCopyShowsTheCopyRoutinesText) {
    ui.answers = {msgbox::Yes, msgbox::Yes};
    const std::string gone = working + ".weg";

    EXPECT_FALSE(engine->mfWBM_CSVCopy(path, gone));

    EXPECT_EQ(ui.boxes[0].text.rfind("Rechnungs-Steuerdatei zurückkopieren?\r\n", 0), 0u);
    EXPECT_EQ(ui.boxes.back().buttons, 16);
    EXPECT_EQ(ui.boxes.back().title, "Originaldatei zurückkopieren");
    EXPECT_EQ(ui.boxes.back().text.rfind("Kann Datei nicht kopieren!\r\n" + gone + "\r\nnach\r\n" + path, 0),
              0u);
    expectOriginalsUntouched();
}

class ControlFile : public EngineTest {};

TEST_F(ControlFile, IsReadFromItsWorkingCopy) {
    const std::string path = original("Lauf.csv", "RgDatum;KliName\r\n1.2.2024;Muster\r\n2.2.2024;Meier");

    engine->mfWBM_OpenCSVDoc(path);

    EXPECT_TRUE(ui.boxes.empty());
    EXPECT_EQ(engine->CSVDoc(), path);
    EXPECT_EQ(engine->CSVWork(), workFolder() + "/Lauf.csv");
    EXPECT_EQ(engine->CSV().LineCount(), 2);
    EXPECT_EQ(engine->CSV().FieldStr("KliName", 2), "Meier");
    ASSERT_TRUE(ui.csvDoc);
    EXPECT_EQ(ui.csvDoc->working, engine->CSVWork());
}

TEST_F(ControlFile, OneWithoutInvoicesIsKeptButTheWindowSaysWhy) {
    // Saved with LF alone, the header and both rows are one line.
    const std::string path = original("Lauf.csv", "RgDatum;KliName\n1.2.2024;M\xC3\xBCller\n");

    engine->mfWBM_OpenCSVDoc(path);

    EXPECT_EQ(engine->CSVDoc(), path);
    EXPECT_EQ(engine->CSVInvoices(), 0);
    ASSERT_EQ(ui.boxes.size(), 1u);
    EXPECT_EQ(ui.boxes[0].buttons, 16);
    EXPECT_EQ(ui.boxes[0].text.rfind("Lauf.csv\r\nDie Steuerdatei enthält keine Rechnungen.\r\nHinweis: Die "
                                     "Zeilen der Steuerdatei enden nur mit LF",
                                     0),
              0u)
        << ui.boxes[0].text;
    EXPECT_EQ(ui.trace, ui.boxes[0].text.substr(std::string("Lauf.csv\r\n").size()));
    EXPECT_NE(ui.trace.find("(z. B. «ü», gelesen als «Ã¼»)"), std::string::npos) << ui.trace;

    // Rows without an invoice date are no invoices either; a proper file has nothing to say.
    engine->mfWBM_OpenCSVDoc(original("Leer.csv", "RgDatum;KliName\r\n;Muster\r\n"));
    EXPECT_EQ(ui.boxes.size(), 2u);
    engine->mfWBM_OpenCSVDoc(original("Gut.csv", "RgDatum;KliName\r\n1.2.2024;Muster\r\n"));
    EXPECT_EQ(ui.boxes.size(), 2u);
    EXPECT_EQ(engine->CSVInvoices(), 1);
    EXPECT_TRUE(engine->CSVHints().empty());
}

TEST_F(ControlFile, AMissingFileCannotBeOpened) {
    engine->mfWBM_OpenCSVDoc(baseFolder() + "/forms/Fehlt.csv");
    EXPECT_EQ(ui.boxes.back(),
              (Box{"Fehlt.csv\r\nKann Datei nicht öffnen!", 16, "CSV Serienbrief-Steuerdatei"}));
    EXPECT_FALSE(ui.csvDoc);
}

TEST_F(ControlFile, AnEmptyPathLetsGoOfIt) {
    engine->mfWBM_OpenCSVDoc(original("Lauf.csv", "RgDatum\r\n1.2.2024\r\n"));
    engine->mfWBM_OpenCSVDoc("");
    EXPECT_EQ(engine->CSVDoc(), "");
    EXPECT_LT(engine->CSV().LineCount(), 1);
    EXPECT_FALSE(ui.csvDoc);
}

class MainLoop : public EngineTest {};

TEST_F(MainLoop, OpensTheGivenFilesRunsTheWindowsEventsAndEndsTheSession) {
    engine->CSVDoc(original("Lauf.csv", "RgDatum\r\n1.2.2024"));
    engine->WordDoc(form("Rechnung.docx", letter()));
    engine->Template("&W&\\&R&.&E&");
    ui.raise(WindowEvent::Analyze);
    ui.answers = {msgbox::Yes};

    engine->Execute(true);

    ASSERT_EQ(ui.windows.size(), 1u);
    EXPECT_TRUE(ui.windows[0].mergePage);
    EXPECT_EQ(ui.windows[0].Template, "&W&\\&R&.&E&");
    EXPECT_EQ(ui.windows[0].fields.size(), engine->Fields().Items().size());
    ASSERT_EQ(ui.boxes.size(), 2u);
    EXPECT_EQ(ui.boxes[0].text.rfind("KDX5-Exportfelder: 63-total\r\n", 0), 0u);
    EXPECT_EQ(ui.boxes[1].text, "Word schliessen?");
    EXPECT_FALSE(engine->Running());
    EXPECT_FALSE(engine->Word());
    EXPECT_EQ(engine->CSV().LineCount(), 1);
    expectOriginalsUntouched();
}

TEST_F(MainLoop, TheMaskIsStoredWhenTheEngineEnds) {
    engine->Template("&W&\\&K&.&E&");
    engine.reset();
    EXPECT_EQ(options.values["MergerTemplate"], "&W&\\&K&.&E&");
}

} // namespace
} // namespace testing
} // namespace wordbm
