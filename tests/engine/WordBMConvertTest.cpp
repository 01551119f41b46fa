#include "EngineFixture.h"
#include "engine/word/Application.h"
#include "engine/word/Bookmarks.h"
#include "engine/word/Document.h"
#include "engine/word/Range.h"
#include "engine/word/Sections.h"
#include "engine/word/Selection.h"

namespace wordbm::testing {
namespace {

class Conversion : public EngineTest {
protected:
    // Three known merge fields and an unknown one in the main text.
    void openLetter() {
        TestForm form;
        form.mergeField("KliName")
            .text(" ")
            .mergeField("KliKonto")
            .text(" ")
            .mergeField("Unbekannt")
            .text(" ");
        form.mergeField("RgDatum").text("\r");
        ASSERT_TRUE(open(this->form("Rechnung.docx", form)));
    }
    std::string question(const std::string& field) const {
        return "Seriendrukfeld \"" + field + "\" durch Textmarke ersetzen?";
    }
    // The field each engine bookmark reads as, in document order.
    std::vector<std::string> placedFields() {
        const word::BookmarksPtr marks = doc().Content()->Bookmarks();
        std::vector<std::string> fields;
        for (int i = 1; i <= marks->Count(); ++i) {
            const word::BookmarkPtr mark = marks->Item(i);
            fields.push_back(engine->Fields().BookmarkFieldGet(mark->Name()));
            EXPECT_EQ(mark->Range()->Text(), "[" + fields.back() + "]");
        }
        return fields;
    }
};

TEST_F(Conversion, InsertTypesTheFieldOverTheSelectionUnderANewBookmark) {
    ASSERT_TRUE(open(form("Rechnung.docx", TestForm().text("Hallo Welt\r"))));
    app().Selection()->SetRange(6, 10);

    engine->mfWBM_Insert("KliName");

    EXPECT_EQ(mainText(), "Hallo [KliName]\r");
    ASSERT_EQ(doc().Bookmarks()->Count(), 1);
    const std::string name = doc().Bookmarks()->Item(1)->Name();
    EXPECT_EQ(placedFields(), std::vector<std::string>{"KliName"});
    EXPECT_EQ(ui.boxes.back().text, "Feld=KliName\r\nTextmarke=" + name);
    EXPECT_EQ(ui.boxes.back().title, "Textmarke eingefügt");
    EXPECT_EQ(app().Selection()->Start(), 15);
    EXPECT_EQ(app().Selection()->End(), 15);
    EXPECT_EQ(doc().Bookmarks()->DefaultSorting(), 0);
    EXPECT_FALSE(doc().Bookmarks()->ShowHidden());
    expectOriginalsUntouched();
}

TEST_F(Conversion, AutomaticModeReplacesEveryKnownFieldAndCountsDuplicates) {
    TestForm form;
    form.mergeField("KliName").text(" ").mergeField("Unbekannt").text("\r");
    ASSERT_TRUE(open(this->form("Rechnung.docx", form.header(TestForm().mergeField("RgDatum")).sections(2))));
    ui.answers = {msgbox::Yes};

    engine->mfWBM_Replace();

    EXPECT_EQ(ui.texts(), (std::vector<std::string>{
                              "Alle bekannten Seriendruckfelder durch Textmarken ersetzen?",
                              "2 Seriendruckfelder (+1 Duplikate) wurden duch Textfelder ersetzt!"}));
    EXPECT_EQ(ui.boxes[0].buttons, 35);
    EXPECT_EQ(mainText().rfind("[KliName] «Unbekannt»\r", 0), 0u) << mainText();
    EXPECT_EQ(doc().Sections()->Item(1)->Headers()->Item(1)->Range()->Text(), "[RgDatum]\r");
    EXPECT_EQ(engine->ReplacedCount(), 2);
    EXPECT_TRUE(app().ScreenUpdating());
    EXPECT_EQ(ui.progress.front(), "start Word-Rechnungsformular 0");
    EXPECT_EQ(ui.progress.back(), "stop");
    EXPECT_EQ(app().Selection()->Start(), 0);
}

TEST_F(Conversion, AskingModeReplacesOnlyWhatIsConfirmed) {
    openLetter();
    ui.answers = {msgbox::No, msgbox::Yes, msgbox::No, msgbox::Yes};

    engine->mfWBM_Replace();

    EXPECT_EQ(ui.texts(),
              (std::vector<std::string>{"Alle bekannten Seriendruckfelder durch Textmarken ersetzen?",
                                        question("KliName"), question("KliKonto"), question("RgDatum"),
                                        "2 Seriendruckfelder wurden duch Textfelder ersetzt!"}));
    EXPECT_EQ(mainText(), "[KliName] «KliKonto» «Unbekannt» [RgDatum]\r");
    EXPECT_EQ(placedFields(), (std::vector<std::string>{"KliName", "RgDatum"}));
    EXPECT_TRUE(ui.progress.empty());
    EXPECT_EQ(ui.unanswered, 0);
}

TEST_F(Conversion, CancelInTheFirstQuestionChangesNothing) {
    openLetter();
    const std::string before = mainText();
    ui.answers = {msgbox::Cancel};

    engine->mfWBM_Replace();

    EXPECT_EQ(ui.boxes.size(), 1u);
    EXPECT_EQ(mainText(), before);
}

TEST_F(Conversion, AWordProcessorGoneMidwayReplacesNothingMore) {
    openLetter();
    ui.answers = {msgbox::No, msgbox::Yes, msgbox::Yes, msgbox::Yes};
    ui.onBox = [this](const ScriptedUserInterface::Box& box) {
        if (box.text == question("KliKonto")) {
            app().crash();
        }
    };

    engine->mfWBM_Replace();

    EXPECT_EQ(ui.boxes.back().text, "1 Seriendruckfelder wurden duch Textfelder ersetzt!");
}

TEST_F(Conversion, AFormWithoutMergeFieldsReplacesNone) {
    ASSERT_TRUE(open(form("Leer.docx", TestForm())));
    ui.answers = {msgbox::Yes};
    engine->mfWBM_Replace();
    EXPECT_EQ(ui.boxes.back().text, "0 Seriendruckfelder wurden duch Textfelder ersetzt!");
}

TEST_F(Conversion, ResetAnsweredOtherwiseThanYesChangesNothing) {
    openLetter();
    const std::string before = mainText();
    ui.answers = {msgbox::No, msgbox::Cancel};
    engine->mfWBM_Reset();
    engine->mfWBM_Reset();
    EXPECT_EQ(ui.boxes.size(), 2u);
    EXPECT_EQ(mainText(), before);
    EXPECT_TRUE(doc().Saved());
}

TEST_F(Conversion, VerifyBracketsEmptiesQuestionMarksAndLeavesTheRest) {
    TestForm form;
    form.bookmark("kdx6_KliName_000001", "KliName").text(" ").bookmark("kdx6_RgDatum_000002", "[RgDatum]");
    form.text(" ").bookmark("kdx6_KliKonto_000003", "[?]").text(" ").bookmark("Fremd", "x").text(" ");
    form.bookmark("kdx6_ESQRBetrag_000004", "12.50")
        .text(" ")
        .bookmark("kdx6_RgID_000005", "[RgID")
        .text("\r");
    ASSERT_TRUE(open(this->form("Rechnung.docx", form)));

    engine->mfWBM_Verify();

    EXPECT_EQ(ui.boxes.back().text, "Textfelder: 6-total, 5-bekannt, 3-angepasst");
    EXPECT_EQ(ui.boxes.back().title, "Textmarken verifizieren");
    EXPECT_EQ(mainText(), "[KliName] [RgDatum]  x 12.50 [RgID]\r");
    EXPECT_EQ(bookmarkText("kdx6_KliName_000001"), "[KliName]");
    EXPECT_EQ(bookmarkText("kdx6_RgID_000005"), "[RgID]");
    EXPECT_EQ(bookmarkText("kdx6_KliKonto_000003"), "");

    engine->mfWBM_Verify();
    EXPECT_EQ(ui.boxes.back().text, "Textfelder: 6-total, 5-bekannt, 0-angepasst");
}

TEST_F(Conversion, CommandsWithoutADocumentDoNothing) {
    engine->mfWBM_Insert("KliName");
    engine->mfWBM_Replace();
    engine->mfWBM_Reset();
    engine->mfWBM_Verify();
    engine->mfWBM_Analyze();
    EXPECT_TRUE(ui.boxes.empty());
}

} // namespace
} // namespace wordbm::testing
