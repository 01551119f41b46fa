#include "DocumentSnapshot.h"
#include "StoryXml.h"
#include "WordSession.h"
#include "engine/ooxml/Package.h"
#include "engine/word/AutomationError.h"
#include "engine/word/TextLength.h"

#include <gtest/gtest.h>

namespace wordbm::ooxml {
namespace {

using test::DocumentSnapshot;
using test::WordSession;
namespace wd = word::wd;

// Every paragraph the edit changed holds one of the texts typed; nothing else moved.
void expectOnlyParagraphsWith(const std::vector<std::string>& changed,
                              const std::vector<std::string>& typed) {
    EXPECT_FALSE(changed.empty());
    for (const auto& paragraph : changed) {
        const bool explained = std::any_of(typed.begin(), typed.end(), [&](const std::string& text) {
            return paragraph.find(text) != std::string::npos;
        });
        EXPECT_TRUE(explained) << paragraph;
    }
}

// The run that holds `text` in a saved part and the run before it, serialised.
std::pair<std::string, std::string> runAndPrevious(const std::string& path, const std::string& part,
                                                   const std::string& text) {
    auto package = Package::open(path);
    for (const auto& found : package->xml(part).select_nodes("//w:r[w:t]")) {
        const auto run = found.node();
        if (std::string(run.child("w:t").child_value()) == text) {
            return {test::rawXml(run.child("w:rPr")),
                    test::rawXml(run.previous_sibling("w:r").child("w:rPr"))};
        }
    }
    ADD_FAILURE() << text << " not found in " << part;
    return {};
}

struct Place {
    std::string document;
    std::string part;
    // Selects the insertion point through the object model.
    std::function<void(WordSession&)> select;
};

class BookmarkInsertion : public ::testing::TestWithParam<Place> {};

TEST_P(BookmarkInsertion, TypesTheBracketedFieldCoversItWithTheBookmarkAndChangesNothingElse) {
    const auto& place = GetParam();
    WordSession session(place.document);
    const DocumentSnapshot before(session.originalPath());
    place.select(session);
    session.insertBookmark("KliName", "kdx6_KliName_123456");

    auto bookmark = session.document()->Bookmarks()->Item("KDX6_kliname_123456");
    EXPECT_EQ(bookmark->Range()->Text(), "[KliName]");
    EXPECT_EQ(session.selection()->Start(), bookmark->End());
    EXPECT_EQ(session.selection()->End(), bookmark->End());

    const auto saved = session.saveCopy();
    expectOnlyParagraphsWith(DocumentSnapshot(saved).changedSince(before), {"[KliName]"});
    const auto [typed, previous] = runAndPrevious(saved, place.part, "[KliName]");
    EXPECT_EQ(typed, previous) << "the typed run keeps the formatting of the text it stands in";
    EXPECT_EQ(
        session.app().Documents()->Open(saved)->Bookmarks()->Item("kdx6_KliName_123456")->Range()->Text(),
        "[KliName]");
}

void inMainText(WordSession& session, long offset) {
    session.document()->Range(offset, offset)->Select();
}

void inHeaderOrFooter(WordSession& session, bool header, long offset) {
    auto sections = session.document()->Sections()->Item(1);
    (header ? sections->Headers() : sections->Footers())->Item(wd::wdHeaderFooterPrimary)->Range()->Select();
    session.selection()->SetRange(offset, offset);
}

void inFirstTextBox(WordSession& session, long offset) {
    session.document()->Shapes()->Item(1)->TextFrame()->TextRange()->Select();
    session.selection()->SetRange(offset, offset);
}

INSTANTIATE_TEST_SUITE_P(
    Stories, BookmarkInsertion,
    ::testing::Values(
        Place{"Bookmarks.docx", "word/document.xml", [](WordSession& s) { inMainText(s, 5); }},
        // The invoice table's second cell, inside the text of its first run.
        Place{"Mail merge destinations - Invoice.docx", "word/document.xml",
              [](WordSession& s) {
                  const auto text = s.document()->Content()->Text();
                  inMainText(s, static_cast<long>(text.find("Invoice")) + 3);
              }},
        Place{"bmk-bookmarks.docx", "word/header1.xml", [](WordSession& s) { inHeaderOrFooter(s, true, 8); }},
        Place{"bmk-bookmarks.docx", "word/footer1.xml",
              [](WordSession& s) { inHeaderOrFooter(s, false, 8); }},
        Place{"text-box.docx", "word/document.xml", [](WordSession& s) { inFirstTextBox(s, 5); }},
        Place{"Textboxes in drawing canvas.docx", "word/document.xml",
              [](WordSession& s) { inFirstTextBox(s, 5); }}),
    [](const auto& param) { return "Place" + std::to_string(param.index); });

TEST(BookmarkTyping, AtTheStartGoesInsideAtTheEndOutsideAndOverTheWholeKeepsTheBookmark) {
    WordSession session("bmk-bookmarks.docx");
    auto bookmarks = session.document()->Bookmarks();
    auto cursor = session.selection();
    bookmarks->Item("bookmark_body")->Select();
    EXPECT_EQ(cursor->MoveLeft(), 1) << "the first unit collapses the selection";
    cursor->TypeText("[");
    bookmarks->Item("bookmark_body")->Select();
    cursor->MoveRight();
    cursor->TypeText("]");
    EXPECT_EQ(bookmarks->Item("bookmark_body")->Range()->Text(), "[Bookmark_body");
    bookmarks->Item("bookmark_body")->Select();
    cursor->TypeText("Wert");
    EXPECT_EQ(bookmarks->Item("bookmark_body")->Range()->Text(), "Wert");
    EXPECT_EQ(session.document()->Bookmarks()->Count(), 5);
}

TEST(BookmarkTyping, TheVerifySequenceBracketsABookmarksTextInEveryStory) {
    WordSession session("bmk-bookmarks.docx");
    const DocumentSnapshot before(session.originalPath());
    auto cursor = session.selection();
    std::vector<std::string> expected;
    // (bookmark_footer ends behind its paragraph mark, so its text holds a paragraph break)
    for (const char* name : {"bookmark_body", "bookmark_header", "bookmark_footnote", "bookmark_endnote"}) {
        auto bookmark = session.document()->Bookmarks()->Item(name);
        const auto old = bookmark->Range()->Text();
        bookmark->Select();
        cursor->MoveLeft();
        cursor->TypeText("[" + old + "]");
        bookmark->Select();
        cursor->MoveRight();
        for (long i = 0; i < word::TextLength(old); ++i) {
            cursor->TypeBackspace();
        }
        EXPECT_EQ(bookmark->Range()->Text(), "[" + old + "]");
        expected.push_back("[" + old + "]");
    }
    const auto saved = session.saveCopy();
    expectOnlyParagraphsWith(DocumentSnapshot(saved).changedSince(before), expected);
}

TEST(BookmarkTyping, TheVerifySequenceInAHeaderTextBoxStoredTwiceReachesBothCopies) {
    WordSession session("Fax.docx");
    const DocumentSnapshot before(session.originalPath());
    auto bookmark = session.document()->Bookmarks()->Item("LAN_Phone");
    EXPECT_EQ(bookmark->StoryType(), 5);
    bookmark->Select();
    session.selection()->MoveLeft();
    session.selection()->TypeText("[Phone]");
    bookmark->Select();
    session.selection()->MoveRight();
    for (int i = 0; i < 5; ++i) {
        session.selection()->TypeBackspace();
    }
    EXPECT_EQ(bookmark->Range()->Text(), "[Phone]");
    const auto saved = session.saveCopy();
    const DocumentSnapshot after(saved);
    const auto& header = after.paragraphs("word/header1.xml");
    const auto copies = std::count_if(header.begin(), header.end(), [](const std::string& paragraph) {
        return paragraph.find("<w:t>[Phone]</w:t>") != std::string::npos;
    });
    EXPECT_GE(copies, 2) << "the text box and its fallback copy";
    EXPECT_EQ(DocumentSnapshot(saved).paragraphs("word/document.xml"),
              before.paragraphs("word/document.xml"));
}

TEST(BookmarkTyping, BackspacingAllOfABookmarksTextLeavesAnEmptyBookmark) {
    WordSession session("Bookmarks.docx");
    auto bookmark = session.document()->Bookmarks()->Item("MyBookmark1");
    const auto length = word::TextLength(bookmark->Range()->Text());
    bookmark->Select();
    session.selection()->MoveRight();
    for (long i = 0; i < length; ++i) {
        session.selection()->TypeBackspace();
    }
    EXPECT_TRUE(session.document()->Bookmarks()->Exists("MyBookmark1"));
    EXPECT_EQ(bookmark->Range()->Text(), "");
    EXPECT_EQ(session.document()->Bookmarks()->Item("My_Bookmark2")->Range()->Text(), "Second bookmark.");
}

class MergeFieldReplacement : public ::testing::TestWithParam<std::string> {};

// All field collections the engine's document walk visits: main text, text boxes, headers, footers.
std::vector<word::FieldsPtr> everyFieldCollection(word::Document& document) {
    std::vector<word::FieldsPtr> collections{document.Fields()};
    auto shapes = document.Shapes();
    for (int i = 1; i <= shapes->Count(); ++i) {
        if (shapes->Item(i)->TextFrame()->HasText()) {
            collections.push_back(shapes->Item(i)->TextFrame()->TextRange()->Fields());
        }
    }
    auto sections = document.Sections();
    for (int s = 1; s <= sections->Count(); ++s) {
        for (auto headers : {sections->Item(s)->Headers(), sections->Item(s)->Footers()}) {
            for (int h = 1; h <= headers->Count(); ++h) {
                collections.push_back(headers->Item(h)->Range()->Fields());
            }
        }
    }
    return collections;
}

TEST_P(MergeFieldReplacement, SelectAndTypeReplacesEachFieldByItsBracketedNameAndNothingElse) {
    WordSession session(GetParam());
    const DocumentSnapshot before(session.originalPath());
    std::vector<std::string> typed;
    int others = 0;
    for (const auto& fields : everyFieldCollection(*session.document())) {
        others += fields->Count();
        for (const auto& field : WordSession::mergeFields(fields)) {
            const auto display = "[" + WordSession::mergeFieldName(field) + "]";
            field->Select();
            session.selection()->TypeText(display);
            typed.push_back(display);
            --others;
        }
    }
    ASSERT_FALSE(typed.empty());
    int left = 0;
    for (const auto& fields : everyFieldCollection(*session.document())) {
        EXPECT_TRUE(WordSession::mergeFields(fields).empty());
        left += fields->Count();
        for (int i = 1; i <= fields->Count(); ++i) {
            EXPECT_NO_THROW(fields->Item(i)->Code()->Text());
        }
    }
    EXPECT_EQ(left, others) << "other fields are kept";
    const auto saved = session.saveCopy();
    expectOnlyParagraphsWith(DocumentSnapshot(saved).changedSince(before), typed);
}

INSTANTIATE_TEST_SUITE_P(Corpus, MergeFieldReplacement,
                         ::testing::Values("mergefields.docx", "MERGEFIELD.docx",
                                           "test_footnote_header_footer.docx", "German text.docx",
                                           "test_merge_multiple_table_rows.docx", "test_spaces.docx",
                                           "test_next_record.docx", "52449.docx"),
                         [](const auto& param) { return "Document" + std::to_string(param.index); });

TEST(MergeFieldReplacement, TheTypedRunTakesTheFormattingOfTheFieldResult) {
    WordSession session("mergefields.docx");
    auto field = session.document()->Fields()->Item(1);
    field->Select();
    session.selection()->TypeText("[Mergefield_One]");
    const auto saved = session.saveCopy();
    auto original = Package::open(session.originalPath());
    std::string resultProperties;
    for (const auto& found : original->xml("word/document.xml").select_nodes("//w:r[w:t='et']")) {
        resultProperties = test::rawXml(found.node().child("w:rPr"));
        break;
    }
    EXPECT_EQ(runAndPrevious(saved, "word/document.xml", "[Mergefield_One]").first, resultProperties);
}

TEST(FieldDeletion, DeletesWholeFieldsAndLeavesTheRest) {
    WordSession session("MERGEFIELD.docx");
    const DocumentSnapshot before(session.originalPath());
    auto fields = session.document()->Fields();
    ASSERT_EQ(fields->Count(), 9);
    while (fields->Count() > 0) {
        fields->Item(1)->Delete();
    }
    EXPECT_EQ(session.document()->Content()->Text().find("«Kundenname»"), std::string::npos);
    const auto saved = session.saveCopy();
    for (const auto& paragraph : DocumentSnapshot(saved).changedSince(before)) {
        EXPECT_EQ(paragraph.find("MERGEFIELD"), std::string::npos);
    }
}

TEST(FieldDeletion, ADeletedFieldRefusesFurtherCalls) {
    WordSession session("52449.docx");
    auto field = session.document()->Fields()->Item(1);
    field->Delete();
    EXPECT_THROW(field->Code(), AutomationError);
    EXPECT_THROW(field->Select(), AutomationError);
    EXPECT_EQ(session.document()->Fields()->Count(), 6);
}

TEST(FieldDeletion, ARangeOrSelectionOfADeletedFieldStaysWhereTheFieldWas) {
    WordSession session("52449.docx");
    auto field = session.document()->Fields()->Item(2);
    field->Select();
    auto whole = session.selection()->Range();
    const long start = whole->Start();
    field->Delete();
    EXPECT_EQ(whole->Start(), start);
    EXPECT_EQ(whole->End(), start);
    EXPECT_NO_THROW(whole->Select());
    session.selection()->TypeText("[Efternavn]");
    EXPECT_EQ(session.document()->Range(start, start + 11)->Text(), "[Efternavn]");
}

} // namespace
} // namespace wordbm::ooxml
