// The engine's commands on an older form as Word writes it (merge-field codes split over runs, a
// header, bookmarks of every layout) and on corpus documents.
#include "EngineFixture.h"
#include "engine/word/Application.h"
#include "engine/word/Bookmarks.h"
#include "engine/word/Document.h"
#include "engine/word/Range.h"
#include "engine/word/Sections.h"
#include "support/Strings.h"

#include <filesystem>

namespace wordbm::testing {
namespace {

const std::string TestForm = std::string(WORDBM_TEST_SOURCE_DIR) + "/forms/Rechnung-Seriendruck.docx";

std::string corpus(const std::string& name) {
    return std::string(WORDBM_CORPUS_DIR) + "/docx/" + name;
}

class Docx : public EngineTest {
protected:
    // The lines of the analysis report.
    std::vector<std::string> analyze() {
        ui.boxes.clear();
        engine->mfWBM_Analyze();
        EXPECT_EQ(ui.boxes.size(), 1u);
        return ui.boxes.empty() ? std::vector<std::string>() : split(ui.boxes.back().text, "\r\n");
    }
    // The text of every bookmark whose field is `field`, by name order.
    std::vector<std::string> textsOf(const std::string& field) {
        std::vector<std::string> texts;
        const word::BookmarksPtr bookmarks = engine->Doc()->Bookmarks();
        for (int i = 1; i <= bookmarks->Count(); ++i) {
            const word::BookmarkPtr bookmark = bookmarks->Item(i);
            if (engine->Fields().BookmarkFieldGet(bookmark->Name()) == field) {
                texts.push_back(bookmark->Range()->Text());
            }
        }
        return texts;
    }
};

TEST_F(Docx, AnalysisCountsMergeFieldsInTheTextAndTheHeaderAndConvertsOldBookmarks) {
    ASSERT_TRUE(open(copyIn(TestForm, "Rechnung.docx")));

    EXPECT_EQ(analyze(), (std::vector<std::string>{"KDX5-Exportfelder: 63-total", "Textfelder: 1-konvertiert",
                                                   "Textfelder: 4-total, 3-bekannt, 1-unbekannt",
                                                   "Seriendruckfelder: 4-total, 3-bekannt, 1-unbekannt"}));
    EXPECT_EQ(textsOf("RgDatum"), std::vector<std::string>{"[RgDatum]"});
    EXPECT_NE(ui.trace.find("Field=KliName( MERGEFIELD KliName \\* MERGEFORMAT ) ISKNOWN"),
              std::string::npos);
    EXPECT_NE(ui.trace.find("          Field=RgID( MERGEFIELD RgID ) ISKNOWN"), std::string::npos);
    expectOriginalsUntouched();
}

TEST_F(Docx, ReplacingTurnsKnownMergeFieldsIntoBookmarksAndLeavesTheUnknownOne) {
    ASSERT_TRUE(open(copyIn(TestForm, "Rechnung.docx")));
    ui.answers = {msgbox::Yes};

    engine->mfWBM_Replace();

    EXPECT_EQ(ui.boxes.back().text, "3 Seriendruckfelder wurden duch Textfelder ersetzt!");
    EXPECT_EQ(textsOf("KliName"), std::vector<std::string>{"[KliName]"});
    EXPECT_EQ(textsOf("KliKonto"), std::vector<std::string>{"[KliKonto]"});
    EXPECT_EQ(textsOf("RgID"), std::vector<std::string>{"[RgID]"});
    EXPECT_EQ(analyze().back(), "Seriendruckfelder: 1-total, 0-bekannt, 1-unbekannt");
    EXPECT_EQ(engine->Doc()->Content()->Text().rfind("Sehr geehrte [KliName], Konto [KliKonto]\r", 0), 0u);
    expectOriginalsUntouched();
}

TEST_F(Docx, AskingModeCancelledMidwayKeepsTheFirstReplacement) {
    ASSERT_TRUE(open(copyIn(TestForm, "Rechnung.docx")));
    ui.answers = {msgbox::No, msgbox::Yes, msgbox::Cancel};

    engine->mfWBM_Replace();

    EXPECT_EQ(ui.texts(),
              (std::vector<std::string>{"Alle bekannten Seriendruckfelder durch Textmarken ersetzen?",
                                        "Seriendrukfeld \"KliName\" durch Textmarke ersetzen?",
                                        "Seriendrukfeld \"KliKonto\" durch Textmarke ersetzen?",
                                        "1 Seriendruckfelder wurden duch Textfelder ersetzt!"}));
    EXPECT_EQ(analyze().back(), "Seriendruckfelder: 3-total, 2-bekannt, 1-unbekannt");
}

TEST_F(Docx, ResetDeletesTheKnownMergeFields) {
    ASSERT_TRUE(open(copyIn(TestForm, "Rechnung.docx")));
    ui.answers = {msgbox::Yes};

    engine->mfWBM_Reset();

    EXPECT_EQ(ui.boxes.back().text, "3/3 Seriendruckfelder gelöscht!");
    EXPECT_EQ(analyze().back(), "Seriendruckfelder: 1-total, 0-bekannt, 1-unbekannt");
    EXPECT_EQ(engine->Doc()->MailMerge()->MainDocumentType(), -1);
}

TEST_F(Docx, InsertPlacesABookmarkAtTheStartOfTheForm) {
    ASSERT_TRUE(open(copyIn(corpus("Bookmarks.docx"), "Bookmarks.docx")));

    engine->mfWBM_Insert("KliName");

    EXPECT_EQ(textsOf("KliName"), std::vector<std::string>{"[KliName]"});
    EXPECT_EQ(engine->Doc()->Content()->Text().rfind("[KliName]", 0), 0u);
    EXPECT_EQ(analyze()[1], "Textfelder: 4-total, 1-bekannt, 3-unbekannt");
}

TEST_F(Docx, CorpusFormsReportTheirMergeFields) {
    ASSERT_TRUE(open(copyIn(corpus("MERGEFIELD.docx"), "MERGEFIELD.docx")));
    EXPECT_EQ(analyze().back(), "Seriendruckfelder: 9-total, 0-bekannt, 9-unbekannt");
    ASSERT_TRUE(open(copyIn(corpus("mergefields.docx"), "mergefields.docx")));
    EXPECT_EQ(analyze().back(), "Seriendruckfelder: 7-total, 0-bekannt, 7-unbekannt");
    expectOriginalsUntouched();
}

TEST_F(Docx, TheConfirmedCopyBackBringsTheConvertedFormHome) {
    const std::string path = copyIn(TestForm, "Rechnung.docx");
    ASSERT_TRUE(open(path));
    ui.answers = {msgbox::Yes};
    engine->mfWBM_Replace();

    ui.answers = {msgbox::Yes, msgbox::Yes, msgbox::Yes};
    engine->mfWBM_OpenWordDoc("");
    ASSERT_EQ(ui.boxes.back().text, "Kopiert");

    ASSERT_TRUE(open(path));
    EXPECT_EQ(analyze().back(), "Seriendruckfelder: 1-total, 0-bekannt, 1-unbekannt");
    EXPECT_EQ(textsOf("KliName"), std::vector<std::string>{"[KliName]"});
}

// A working copy that cannot be saved must never be copied back in its stale state.
TEST_F(Docx, AFailedSaveKeepsTheFormOpenAndCopiesNothingBack) {
    ASSERT_TRUE(open(copyIn(TestForm, "Rechnung.docx")));
    ui.answers = {msgbox::Yes};
    engine->mfWBM_Replace();
    const std::string working = engine->WordWork();
    std::filesystem::remove(working);
    std::filesystem::create_directory(working); // nothing can be saved in its place

    ui.answers = {msgbox::Yes, msgbox::Yes, msgbox::Yes};
    engine->mfWBM_OpenWordDoc("");

    EXPECT_NE(ui.boxes.back().text.find("Das Word-Rechnungsformular wurde nicht gespeichert!"),
              std::string::npos)
        << ui.boxes.back().text;
    EXPECT_TRUE(engine->Word());
    expectOriginalsUntouched();
    std::filesystem::remove(working);
}

} // namespace
} // namespace wordbm::testing
