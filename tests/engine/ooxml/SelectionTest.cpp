#include "engine/word/Selection.h"

#include "HandmadeDocument.h"
#include "engine/ooxml/DocxApplication.h"
#include "engine/ooxml/TemporaryFolder.h"
#include "engine/word/AutomationError.h"
#include "engine/word/Bookmarks.h"
#include "engine/word/Document.h"
#include "engine/word/Documents.h"
#include "engine/word/Range.h"

#include <gtest/gtest.h>

namespace wordbm::ooxml {
namespace {

namespace wd = word::wd;

class SelectionMoves : public ::testing::Test {
protected:
    void open(const std::string& body) {
        document = app->Documents()->Open(test::handmadeDocument(folder.path(), body));
        cursor = app->Selection();
    }

    TemporaryFolder folder;
    std::shared_ptr<DocxApplication> app = DocxApplication::create();
    word::DocumentPtr document;
    word::SelectionPtr cursor;
};

TEST_F(SelectionMoves, StandsAtTheStartOfTheMainStoryAfterOpening) {
    open("<w:p><w:r><w:t>abc</w:t></w:r></w:p>");
    EXPECT_EQ(cursor->Start(), 0);
    EXPECT_EQ(cursor->End(), 0);
}

TEST_F(SelectionMoves, WithoutExtendTheFirstUnitCollapsesTheSelection) {
    open("<w:p><w:r><w:t>abcdef</w:t></w:r></w:p>");
    cursor->SetRange(2, 5);
    EXPECT_EQ(cursor->MoveLeft(wd::wdCharacter, 2), 2);
    EXPECT_EQ(cursor->Start(), 1);
    EXPECT_EQ(cursor->End(), 1);
    cursor->SetRange(2, 5);
    EXPECT_EQ(cursor->MoveRight(), 1);
    EXPECT_EQ(cursor->Start(), 5);
}

TEST_F(SelectionMoves, ExtendMovesTheActiveEndAndKeepsTheAnchor) {
    open("<w:p><w:r><w:t>abcdef</w:t></w:r></w:p>");
    cursor->SetRange(5, 5);
    EXPECT_EQ(cursor->MoveLeft(wd::wdCharacter, 3, wd::wdExtend), 3);
    EXPECT_EQ(cursor->Text(), "cde");
    EXPECT_EQ(cursor->HomeKey(wd::wdStory, wd::wdExtend), 2);
    EXPECT_EQ(cursor->Text(), "abcde");
    EXPECT_EQ(cursor->MoveLeft(wd::wdCharacter, 10), 1) << "stops at the story's start";
}

TEST_F(SelectionMoves, StepsOverCharactersOutsideTheBasicPlaneWhole) {
    open("<w:p><w:r><w:t>a\xF0\x9F\x98\x80z</w:t></w:r></w:p>");
    cursor->SetRange(3, 3);
    cursor->MoveLeft();
    EXPECT_EQ(cursor->Start(), 1);
    cursor->MoveRight(wd::wdCharacter, 1, wd::wdExtend);
    EXPECT_EQ(cursor->Text(), "\xF0\x9F\x98\x80");
    cursor->MoveRight();
    cursor->TypeBackspace();
    EXPECT_EQ(document->Content()->Text(), "az\r");
}

TEST_F(SelectionMoves, CannotStandBehindTheLastParagraphMark) {
    open("<w:p><w:r><w:t>ab</w:t></w:r></w:p>");
    EXPECT_EQ(cursor->MoveRight(wd::wdCharacter, 10), 2);
    cursor->TypeText("c");
    EXPECT_EQ(document->Content()->Text(), "abc\r");
}

TEST_F(SelectionMoves, TypingIntoABodyWithoutParagraphsMakesOneBeforeTheSection) {
    open("<w:sectPr/>");
    EXPECT_EQ(document->Content()->Text(), "");
    cursor->TypeText("x");
    EXPECT_EQ(document->Content()->Text(), "x\r");
    EXPECT_EQ(cursor->Start(), 1);
}

TEST_F(SelectionMoves, RefusesUnitsItDoesNotKnow) {
    open("<w:p/>");
    EXPECT_THROW(cursor->MoveLeft(2), AutomationError);
    EXPECT_THROW(cursor->HomeKey(5), AutomationError);
}

TEST_F(SelectionMoves, BackspaceDeletesTheSelectionOrTheCharacterBeforeTheCursor) {
    open("<w:p><w:r><w:t>ab</w:t></w:r></w:p><w:p><w:r><w:t>cd</w:t></w:r></w:p>");
    cursor->TypeBackspace();
    EXPECT_EQ(document->Content()->Text(), "ab\rcd\r");
    cursor->SetRange(3, 3);
    cursor->TypeBackspace();
    EXPECT_EQ(document->Content()->Text(), "abcd\r");
    cursor->SetRange(1, 3);
    cursor->TypeBackspace();
    EXPECT_EQ(document->Content()->Text(), "ad\r");
    EXPECT_EQ(cursor->Start(), 1);
}

TEST_F(SelectionMoves, TypedLineEndsOfAnyKindStartParagraphs) {
    open("<w:p><w:r><w:t>x</w:t></w:r></w:p>");
    cursor->TypeText("a\r\nb\nc\vd");
    EXPECT_EQ(document->Content()->Text(), "a\rb\rc\vdx\r");
    EXPECT_EQ(cursor->Start(), 7);
    EXPECT_FALSE(document->Saved());
}

TEST_F(SelectionMoves, RangeTextReplacesAndThenCoversTheNewText) {
    open("<w:p><w:r><w:t>Hallo Welt</w:t></w:r></w:p>");
    auto range = document->Range(6, 10);
    range->Text("Bern");
    range->InsertAfter("!");
    EXPECT_EQ(range->Text(), "Bern!");
    EXPECT_EQ(document->Content()->Text(), "Hallo Bern!\r");
}

TEST_F(SelectionMoves, BookmarkNamesAreCheckedAndMatchedIgnoringCase) {
    open("<w:p><w:r><w:t>abc</w:t></w:r></w:p>");
    auto bookmarks = document->Bookmarks();
    EXPECT_THROW(bookmarks->Add("1abc", document->Range(0, 1)), AutomationError);
    EXPECT_THROW(bookmarks->Add("mit Leerzeichen", document->Range(0, 1)), AutomationError);
    EXPECT_THROW(bookmarks->Add(std::string(41, 'x'), document->Range(0, 1)), AutomationError);
    bookmarks->Add("Zweite", document->Range(1, 2));
    bookmarks->Add("erste", document->Range(0, 1));
    bookmarks->Add("ERSTE", document->Range(2, 3));
    ASSERT_EQ(bookmarks->Count(), 2) << "the same name moves the bookmark";
    EXPECT_EQ(bookmarks->Item(1)->Name(), "ERSTE");
    EXPECT_EQ(bookmarks->Item("erste")->Range()->Text(), "c");
    EXPECT_EQ(bookmarks->Item(2)->Name(), "Zweite");
    bookmarks->Add("_Versteckt", document->Range(0, 0));
    EXPECT_EQ(bookmarks->Count(), 2);
    bookmarks->ShowHidden(true);
    EXPECT_EQ(bookmarks->Count(), 3);
    EXPECT_EQ(document->Range(0, 2)->Bookmarks()->Item(1)->Name(), "_Versteckt") << "document order";
}

} // namespace
} // namespace wordbm::ooxml
