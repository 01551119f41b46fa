#include "CorpusFiles.h"
#include "HandmadeDocument.h"
#include "WordSession.h"
#include "engine/ooxml/Package.h"
#include "engine/ooxml/TemporaryFolder.h"
#include "engine/word/AutomationError.h"
#include "engine/word/Font.h"
#include "qrbill/ImageSlot.h"

#include <fstream>
#include <gtest/gtest.h>

namespace wordbm::ooxml {
namespace {

using test::WordSession;
namespace wd = word::wd;

std::string headerText(word::Document& document, int section, bool header, int index) {
    auto sections = document.Sections()->Item(section);
    return (header ? sections->Headers() : sections->Footers())->Item(index)->Range()->Text();
}

TEST(HeadersAndFooters, AlwaysThreeAndATypeASectionLacksIsTheOneBefore) {
    WordSession session("sections_multiple.docx");
    auto& document = *session.document();
    ASSERT_EQ(document.Sections()->Count(), 2);
    auto second = document.Sections()->Item(2);
    EXPECT_EQ(second->Headers()->Count(), 3);
    EXPECT_EQ(second->Index(), 2);
    for (const int index : {wd::wdHeaderFooterFirstPage, wd::wdHeaderFooterEvenPages}) {
        EXPECT_EQ(headerText(document, 2, true, index), headerText(document, 1, true, index));
        EXPECT_EQ(headerText(document, 2, false, index), headerText(document, 1, false, index));
    }
    EXPECT_NE(headerText(document, 2, true, wd::wdHeaderFooterPrimary),
              headerText(document, 1, true, wd::wdHeaderFooterPrimary));
    EXPECT_EQ(second->Headers()->Item(wd::wdHeaderFooterFirstPage)->Range()->StoryType(), 10);
    EXPECT_EQ(second->Footers()->Item(wd::wdHeaderFooterEvenPages)->Range()->StoryType(), 8);
}

TEST(HeadersAndFooters, ATypeNoSectionDefinesDoesNotExistAndIsEmpty) {
    WordSession session("Bookmarks.docx");
    auto section = session.document()->Sections()->Item(1);
    EXPECT_TRUE(section->Headers()->Item(wd::wdHeaderFooterFirstPage)->Exists());
    auto primary = section->Headers()->Item(wd::wdHeaderFooterPrimary);
    EXPECT_FALSE(primary->Exists());
    EXPECT_EQ(primary->Range()->Text(), "");
    EXPECT_EQ(primary->Range()->Fields()->Count(), 0);
    EXPECT_THROW(primary->Range()->Text("x"), AutomationError);
    EXPECT_FALSE(section->Footers()->Item(wd::wdHeaderFooterPrimary)->Exists());
    EXPECT_THROW(section->Headers()->Item(4), AutomationError);
}

TEST(HeadersAndFooters, ShapesOfAHeaderAreThoseOfAllHeadersAndFooters) {
    WordSession session("stress017.docx");
    auto section = session.document()->Sections()->Item(1);
    const int count = section->Headers()->Item(1)->Shapes()->Count();
    EXPECT_GT(count, 0);
    EXPECT_EQ(section->Footers()->Item(3)->Shapes()->Count(), count);
    EXPECT_EQ(session.document()->Shapes()->Count(), 0) << "the main story has none of them";
}

TEST(MailMerge, NotAMergeDocumentRemovesTheSettingsAndTheirDataSource) {
    WordSession session("52449.docx");
    auto mailMerge = session.document()->MailMerge();
    EXPECT_EQ(mailMerge->MainDocumentType(), 0);
    mailMerge->MainDocumentType(wd::wdNotAMergeDocument);
    EXPECT_FALSE(session.document()->Saved());
    const auto saved = session.saveCopy();
    auto package = Package::open(saved);
    EXPECT_FALSE(package->xml("word/settings.xml").document_element().child("w:mailMerge"));
    for (const auto& relation : package->relationships("word/settings.xml")) {
        EXPECT_EQ(relation.type.find("mailMergeSource"), std::string::npos) << relation.target;
    }
    EXPECT_EQ(session.app().Documents()->Open(saved)->MailMerge()->MainDocumentType(), -1);
}

// An IF whose code holds a merge field and another IF (with two merge fields in its code and one
// in its result), and whose result holds one more merge field.
TEST(Fields, TheCodeAndTheResultOfAFieldHoldTheFieldsNestedInThem) {
    WordSession session("test_nested_if_inside.docx");
    const auto fields = session.document()->Fields();
    ASSERT_EQ(fields->Count(), 7);
    const auto outer = fields->Item(1);
    EXPECT_EQ(outer->Code()->Fields()->Count(), 5);
    EXPECT_EQ(outer->Result()->Fields()->Count(), 1);
    const auto inner = fields->Item(3);
    EXPECT_NE(inner->Code()->Text().find(" IF "), std::string::npos) << inner->Code()->Text();
    EXPECT_EQ(inner->Code()->Fields()->Count(), 2);
    EXPECT_EQ(inner->Result()->Fields()->Count(), 1);
    EXPECT_EQ(fields->Item(2)->Code()->Fields()->Count(), 0);
}

TEST(TextBoxes, AreReadFromTheChoiceAndTheirEditsReachTheFallbackCopy) {
    WordSession session("text-box.docx");
    auto shapes = session.document()->Shapes();
    ASSERT_EQ(shapes->Count(), 1);
    auto box = shapes->Item("text box 2");
    EXPECT_EQ(box->Type(), wd::msoTextBox);
    ASSERT_TRUE(box->TextFrame()->HasText());
    auto text = box->TextFrame()->TextRange();
    EXPECT_EQ(text->Text(), "Datum plane\r");
    EXPECT_EQ(text->StoryType(), 5);
    session.document()->Range(0, 0)->Select();
    text->Text("[Datum]");
    const auto saved = session.saveCopy();
    auto package = Package::open(saved);
    std::vector<std::string> copies;
    for (const auto& found : package->xml("word/document.xml").select_nodes("//w:txbxContent")) {
        std::string content;
        for (const auto& t : found.node().select_nodes(".//w:t")) {
            content += t.node().child_value();
        }
        copies.push_back(content);
    }
    EXPECT_EQ(copies, (std::vector<std::string>{"[Datum]", "[Datum]"}));
}

TEST(TextBoxes, AVmlTextBoxWithoutAlternativeIsAStoryToo) {
    WordSession session("textbox.docx");
    auto box = session.document()->Shapes()->Item(1);
    EXPECT_EQ(box->Type(), wd::msoTextBox);
    EXPECT_TRUE(box->TextFrame()->HasText());
    EXPECT_FALSE(box->TextFrame()->TextRange()->Text().empty());
}

TEST(Shapes, ADeletedShapeAndItsTextStopAnsweringAndTheRestGoesOn) {
    WordSession session("text-box.docx");
    auto box = session.document()->Shapes()->Item(1);
    auto text = box->TextFrame()->TextRange();
    box->Delete();
    EXPECT_EQ(session.document()->Shapes()->Count(), 0);
    EXPECT_THROW(box->Name(), AutomationError);
    EXPECT_THROW(text->Text(), AutomationError);
    EXPECT_NO_THROW(session.saveCopy());
}

TEST(Shapes, ACanvasBuiltThroughTheObjectModelHoldsItsBoxesTextAndPicture) {
    WordSession session("Empty.docx");
    auto& document = *session.document();
    auto canvas = document.Shapes()->AddCanvas(175.7F, 541.4F, 419.5F, 297.6F);
    canvas->Name("kdx6_ESQRMakeZT");
    canvas->Line()->Visible(false);
    auto box = canvas->CanvasItems()->AddTextbox(1, 14.2F, 14.2F, 140.0F, 20.0F);
    auto text = box->TextFrame()->TextRange();
    text->Text("Zahlteil");
    text->Font()->Name("Arial");
    text->Font()->Size(11.0F);
    text->Font()->Bold(true);
    TemporaryFolder pictures;
    const auto picture = pictures.path() + "/mark.png";
    std::ofstream(picture, std::ios::binary) << "\x89PNG\r\n\x1a\n";
    auto mark = canvas->CanvasItems()->AddPicture(picture, false, true, 39.7F, 119.1F, 130.4F, 130.4F);
    EXPECT_EQ(mark->Type(), wd::msoPicture);
    const auto saved = session.saveCopy();
    auto reopened = session.app().Documents()->Open(saved);
    ASSERT_EQ(reopened->Shapes()->Count(), 1);
    auto again = reopened->Shapes()->Item("kdx6_ESQRMakeZT");
    EXPECT_EQ(again->Type(), wd::msoCanvas);
    EXPECT_FALSE(again->Line()->Visible());
    ASSERT_EQ(again->CanvasItems()->Count(), 2);
    EXPECT_FLOAT_EQ(again->CanvasItems()->Item(2)->Width(), 130.4F);
    auto frame = again->CanvasItems()->Item(1)->TextFrame();
    EXPECT_EQ(frame->TextRange()->Text(), "Zahlteil\r");
    EXPECT_EQ(frame->TextRange()->Font()->Name(), "Arial");
    EXPECT_FLOAT_EQ(frame->TextRange()->Font()->Size(), 11.0F);
    EXPECT_TRUE(frame->TextRange()->Font()->Bold());
}

TEST(Paste, PutsTheWaitingPictureInlineAtTheCursor) {
    SlotImage image;
    image.png = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
    image.widthMm = 46.0;
    image.heightMm = 46.0;
    ImageSlot::instance().put(image);
    WordSession session("Bookmarks.docx");
    auto bookmark = session.document()->Bookmarks()->Item("MyBookmark1");
    bookmark->Select();
    session.selection()->TypeBackspace();
    session.selection()->Paste();
    ImageSlot::instance().clear();
    EXPECT_EQ(bookmark->Range()->Text(), "") << "a collapsed bookmark does not grow";
    EXPECT_EQ(session.document()->Range(0, 2)->Text(), "\x01\r");
    EXPECT_EQ(session.document()->Shapes()->Count(), 0) << "an inline picture is no floating shape";
    const auto saved = session.saveCopy();
    auto package = Package::open(saved);
    const auto extent = package->xml("word/document.xml").select_node("//wp:inline/wp:extent").node();
    EXPECT_STREQ(extent.attribute("cx").value(), "1656000");
    EXPECT_TRUE(package->hasPart("word/media/wordbm1.png"));
    EXPECT_THROW(session.selection()->Paste(), AutomationError) << "nothing waits any more";
}

TEST(Fonts, ReadTheFormattingThatStylesAndTheRunGive) {
    WordSession session("mergefields.docx");
    auto font = session.document()->Fields()->Item(1)->Result()->Font();
    EXPECT_FALSE(font->Name().empty());
    EXPECT_GT(font->Size(), 0.0F);
    auto range = session.document()->Range(0, 5);
    range->Font()->Bold(true);
    range->Font()->Size(9.5F);
    EXPECT_TRUE(range->Font()->Bold());
    EXPECT_FLOAT_EQ(range->Font()->Size(), 9.5F);
    EXPECT_FALSE(session.document()->Range(6, 7)->Font()->Bold() && !font->Bold());
}

} // namespace
} // namespace wordbm::ooxml
