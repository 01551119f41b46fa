#include "EngineFixture.h"

namespace wordbm::testing {
namespace {

class Conversion : public EngineTest {
protected:
    // Three known merge fields and an unknown one in the main text.
    void openLetter() {
        fake::FakeForm form;
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
        std::vector<fake::BookmarkRecord> marks = doc().form.bookmarks;
        std::sort(marks.begin(), marks.end(), [](const auto& a, const auto& b) { return a.start < b.start; });
        std::vector<std::string> fields;
        for (const auto& mark : marks) {
            fields.push_back(engine->Fields().BookmarkFieldGet(mark.name));
            EXPECT_EQ(doc().form.bookmarkText(mark.name), "[" + fields.back() + "]");
        }
        return fields;
    }
};

TEST_F(Conversion, InsertTypesTheFieldOverTheSelectionUnderANewBookmark) {
    fake::FakeForm form;
    form.text("Hallo Welt\r");
    ASSERT_TRUE(open(this->form("Rechnung.docx", form)));
    doc().selection = {0, 6, 10};

    engine->mfWBM_Insert("KliName");

    EXPECT_EQ(mainText(), "Hallo [KliName]\r");
    ASSERT_EQ(doc().form.bookmarks.size(), 1u);
    const std::string name = doc().form.bookmarks[0].name;
    EXPECT_EQ(placedFields(), std::vector<std::string>{"KliName"});
    EXPECT_EQ(ui.boxes.back().text, "Feld=KliName\r\nTextmarke=" + name);
    EXPECT_EQ(ui.boxes.back().title, "Textmarke eingefügt");
    EXPECT_EQ(doc().selection.start, 15);
    EXPECT_EQ(doc().selection.end, 15);
    EXPECT_EQ(doc().form.defaultSorting, 0);
    EXPECT_FALSE(doc().form.showHidden);
    expectOriginalsUntouched();
}

TEST_F(Conversion, AutomaticModeReplacesEveryKnownFieldAndCountsDuplicates) {
    fake::FakeForm form;
    form.mergeField("KliName").text(" ").mergeField("Unbekannt").text("\r");
    const int header = form.addStory(7);
    form.mergeField("RgDatum", header);
    form.sections[0].headers[0] = header;
    form.sections.push_back(form.sections[0]);
    ASSERT_TRUE(open(this->form("Rechnung.docx", form)));
    ui.answers = {msgbox::Yes};

    engine->mfWBM_Replace();

    EXPECT_EQ(ui.texts(), (std::vector<std::string>{
                              "Alle bekannten Seriendruckfelder durch Textmarken ersetzen?",
                              "2 Seriendruckfelder (+1 Duplikate) wurden duch Textfelder ersetzt!"}));
    EXPECT_EQ(ui.boxes[0].buttons, 35);
    EXPECT_EQ(mainText(), "[KliName] <Unbekannt>\r");
    EXPECT_EQ(doc().form.stories[static_cast<std::size_t>(header)], "[RgDatum]");
    EXPECT_EQ(engine->ReplacedCount(), 2);
    EXPECT_TRUE(app().screenUpdating);
    EXPECT_EQ(ui.progress.front(), "start Word-Rechnungsformular 0");
    EXPECT_EQ(ui.progress.back(), "stop");
    EXPECT_EQ(doc().selection.start, 0);
}

TEST_F(Conversion, AskingModeReplacesOnlyWhatIsConfirmed) {
    openLetter();
    ui.answers = {msgbox::No, msgbox::Yes, msgbox::No, msgbox::Yes};

    engine->mfWBM_Replace();

    EXPECT_EQ(ui.texts(),
              (std::vector<std::string>{"Alle bekannten Seriendruckfelder durch Textmarken ersetzen?",
                                        question("KliName"), question("KliKonto"), question("RgDatum"),
                                        "2 Seriendruckfelder wurden duch Textfelder ersetzt!"}));
    EXPECT_EQ(mainText(), "[KliName] <KliKonto> <Unbekannt> [RgDatum]\r");
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
    ASSERT_TRUE(open(form("Leer.docx", fake::FakeForm())));
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
    EXPECT_EQ(doc().form.mainDocumentType, 0);
}

TEST_F(Conversion, VerifyBracketsEmptiesQuestionMarksAndLeavesTheRest) {
    fake::FakeForm form;
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
    EXPECT_EQ(doc().form.bookmarkText("kdx6_KliName_000001"), "[KliName]");
    EXPECT_EQ(doc().form.bookmarkText("kdx6_RgID_000005"), "[RgID]");
    ASSERT_NE(doc().form.findBookmark("kdx6_KliKonto_000003"), nullptr);

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
