#include "engine/ooxml/StoryEditor.h"

#include "StoryXml.h"

#include <gtest/gtest.h>

namespace wordbm::ooxml {
namespace {

using test::rawXml;
using test::StoryXml;

const std::string Bold = "<w:rPr><w:b/></w:rPr>";
const std::string Arial = "<w:rPr><w:rFonts w:ascii=\"Arial\"/><w:sz w:val=\"22\"/></w:rPr>";

std::string fieldRuns(const std::string& code, const std::string& result, const std::string& props) {
    return "<w:r>" + props + "<w:fldChar w:fldCharType=\"begin\"/></w:r><w:r>" + props +
           "<w:instrText xml:space=\"preserve\">" + code + "</w:instrText></w:r><w:r>" + props +
           "<w:fldChar w:fldCharType=\"separate\"/></w:r><w:r>" + props + "<w:t>" + result +
           "</w:t></w:r><w:r>" + props + "<w:fldChar w:fldCharType=\"end\"/></w:r>";
}

Span at(long offset) {
    return {offset, offset};
}

Span bookmarkSpan(Story& story, const std::string& name) {
    for (const auto& mark : story.map().bookmarks) {
        if (mark.name == name) {
            return {mark.start, mark.end};
        }
    }
    ADD_FAILURE() << name << " missing";
    return {};
}

TEST(StoryEditorTyping, SplitsOnlyTheRunItTypesIntoAndKeepsItsProperties) {
    StoryXml doc("<w:p><w:r>" + Bold +
                 "<w:t>Hallo Welt</w:t></w:r></w:p><w:p><w:r><w:t>zwei</w:t></w:r></w:p>");
    const auto second = rawXml(doc.body().last_child());
    StoryEditor(doc.story()).replace(at(5), " [KliName]");
    EXPECT_EQ(doc.text(), "Hallo [KliName] Welt\rzwei\r");
    EXPECT_EQ(rawXml(doc.body().first_child()),
              "<w:p><w:r><w:rPr><w:b/></w:rPr><w:t>Hallo</w:t></w:r><w:r><w:rPr><w:b/></w:rPr>"
              "<w:t xml:space=\"preserve\"> [KliName]</w:t></w:r><w:r><w:rPr><w:b/></w:rPr>"
              "<w:t xml:space=\"preserve\"> Welt</w:t></w:r></w:p>");
    EXPECT_EQ(rawXml(doc.body().last_child()), second);
}

TEST(StoryEditorTyping, TurnsLineEndsTabsAndBreaksIntoParagraphsAndRunChildren) {
    StoryXml doc("<w:p><w:pPr><w:jc w:val=\"right\"/><w:sectPr/></w:pPr><w:r><w:t>ab</w:t></w:r></w:p>");
    const auto [start, end] = StoryEditor(doc.story()).replace(at(1), "1\t2\v3\r\n4");
    EXPECT_EQ(doc.text(), "a1\t2\v3\r4b\r");
    EXPECT_EQ(start, 1);
    EXPECT_EQ(end, 8);
    const auto first = doc.body().first_child();
    EXPECT_TRUE(first.child("w:pPr").child("w:jc"));
    EXPECT_FALSE(first.child("w:pPr").child("w:sectPr")) << "the section break stays with the last part";
    EXPECT_TRUE(doc.body().last_child().child("w:pPr").child("w:sectPr"));
}

TEST(StoryEditorTyping, TakesTheFormattingOfTheCharacterBeforeTheCursor) {
    StoryXml doc("<w:p><w:r>" + Bold + "<w:t>fett</w:t></w:r><w:r><w:t>normal</w:t></w:r></w:p>");
    StoryEditor(doc.story()).replace(at(4), "X");
    EXPECT_EQ(doc.text(), "fettXnormal\r");
    EXPECT_EQ(rawXml(doc.body().first_child().child("w:r").next_sibling()),
              "<w:r><w:rPr><w:b/></w:rPr><w:t>X</w:t></w:r>");
}

TEST(StoryEditorTyping, InAnEmptyParagraphTakesTheParagraphMarksFormatting) {
    StoryXml doc("<w:p><w:pPr><w:rPr><w:sz w:val=\"16\"/><w:ins w:id=\"1\"/></w:rPr></w:pPr></w:p>");
    StoryEditor(doc.story()).replace(at(0), "x");
    EXPECT_EQ(rawXml(doc.body().first_child().child("w:r")),
              "<w:r><w:rPr><w:sz w:val=\"16\"/></w:rPr><w:t>x</w:t></w:r>");
}

TEST(StoryEditorBookmarks, TypingAtTheStartExtendsAtTheEndDoesNotAndOverTheWholeKeepsIt) {
    StoryXml doc(
        "<w:p><w:r><w:t>a</w:t></w:r><w:bookmarkStart w:id=\"1\" w:name=\"B\"/><w:r><w:t>[X]</w:t></w:r>"
        "<w:bookmarkEnd w:id=\"1\"/><w:r><w:t>z</w:t></w:r></w:p>");
    StoryEditor editor(doc.story());
    editor.replace(at(1), "<");
    EXPECT_EQ(
        doc.story().map().text(bookmarkSpan(doc.story(), "B").start, bookmarkSpan(doc.story(), "B").end),
        "<[X]");
    editor.replace(at(5), ">");
    auto mark = bookmarkSpan(doc.story(), "B");
    EXPECT_EQ(doc.story().map().text(mark.start, mark.end), "<[X]");
    editor.replace(mark, "neu");
    mark = bookmarkSpan(doc.story(), "B");
    EXPECT_EQ(doc.story().map().text(mark.start, mark.end), "neu");
    EXPECT_EQ(doc.text(), "aneu>z\r");
}

TEST(StoryEditorBookmarks, AddPutsMarkersRightAroundTheSpanAndRemoveTakesThemOut) {
    StoryXml doc("<w:p><w:r>" + Arial + "<w:t>vor[KliName]nach</w:t></w:r></w:p>");
    StoryEditor editor(doc.story());
    editor.addBookmark({3, 12}, "kdx6_KliName_1", "5");
    const auto mark = bookmarkSpan(doc.story(), "kdx6_KliName_1");
    EXPECT_EQ(doc.story().map().text(mark.start, mark.end), "[KliName]");
    editor.addBookmark(at(0), "Leer", "6");
    EXPECT_EQ(bookmarkSpan(doc.story(), "Leer").end, 0);
    editor.removeBookmark("5");
    editor.removeBookmark("6");
    EXPECT_TRUE(doc.story().map().bookmarks.empty());
    EXPECT_EQ(doc.text(), "vor[KliName]nach\r");
}

TEST(StoryEditorBookmarks, DeletingABookmarksTextCollapsesItAndDeletingAroundItRemovesIt) {
    StoryXml doc(
        "<w:p><w:r><w:t>ab</w:t></w:r><w:bookmarkStart w:id=\"1\" w:name=\"In\"/><w:r><w:t>cd</w:t></w:r>"
        "<w:bookmarkEnd w:id=\"1\"/><w:r><w:t>ef</w:t></w:r></w:p>");
    StoryEditor editor(doc.story());
    editor.replace({2, 4}, "");
    ASSERT_EQ(doc.story().map().bookmarks.size(), 1u);
    EXPECT_EQ(bookmarkSpan(doc.story(), "In").start, 2);
    editor.replace({2, 3}, "X");
    editor.replace({1, 4}, "");
    EXPECT_TRUE(doc.story().map().bookmarks.empty());
    EXPECT_EQ(doc.text(), "a\r");
}

TEST(StoryEditorFields, ReplacingTheWholeFieldRemovesCodeAndResultAndKeepsTheResultsFormatting) {
    StoryXml doc("<w:p><w:r><w:t>Name: </w:t></w:r>" + fieldRuns(" MERGEFIELD KliName ", "«KliName»", Arial) +
                 "</w:p>");
    auto& story = doc.story();
    const auto field = story.map().items[story.map().fields[0].begin].node;
    StoryEditor(story).replace({6, 15, FieldPart::Whole, field}, "[KliName]");
    EXPECT_EQ(doc.text(), "Name: [KliName]\r");
    EXPECT_TRUE(story.map().fields.empty());
    EXPECT_EQ(
        rawXml(doc.body().first_child().last_child()),
        "<w:r><w:rPr><w:rFonts w:ascii=\"Arial\"/><w:sz w:val=\"22\"/></w:rPr><w:t>[KliName]</w:t></w:r>");
}

TEST(StoryEditorFields, ReplacesAFieldWithoutResultThroughItsNode) {
    StoryXml doc(
        "<w:p><w:r><w:t>x</w:t></w:r><w:r><w:fldChar w:fldCharType=\"begin\"/></w:r><w:r><w:instrText>"
        " MERGEFIELD Ort </w:instrText></w:r><w:r><w:fldChar w:fldCharType=\"end\"/></w:r></w:p>");
    auto& story = doc.story();
    const auto field = story.map().items[story.map().fields[0].begin].node;
    StoryEditor(story).replace({1, 1, FieldPart::Whole, field}, "[Ort]");
    EXPECT_EQ(doc.text(), "x[Ort]\r");
    EXPECT_EQ(rawXml(doc.body().first_child()),
              "<w:p><w:r><w:t>x</w:t></w:r><w:r><w:t>[Ort]</w:t></w:r></w:p>");
}

TEST(StoryEditorFields, TypingRightBeforeOrAfterAFieldStaysOutsideIt) {
    StoryXml doc("<w:p>" + fieldRuns(" PAGE ", "1", "") + "</w:p>");
    StoryEditor editor(doc.story());
    editor.replace(at(0), "S. ");
    editor.replace(at(4), "!");
    EXPECT_EQ(doc.text(), "S. 1!\r");
    const auto& map = doc.story().map();
    ASSERT_EQ(map.fields.size(), 1u);
    EXPECT_EQ(map.text(map.resultStart(0), map.fieldEnd(0)), "1");
}

TEST(StoryEditorFields, DeletingAcrossAFieldEndKeepsTheFieldWorking) {
    StoryXml doc("<w:p>" + fieldRuns(" PAGE ", "12", "") + "<w:r><w:t>ab</w:t></w:r></w:p>");
    StoryEditor(doc.story()).replace({1, 3}, "");
    const auto& map = doc.story().map();
    ASSERT_EQ(map.fields.size(), 1u);
    EXPECT_EQ(map.fields[0].code, " PAGE ");
    EXPECT_EQ(doc.text(), "1b\r");
}

TEST(StoryEditorParagraphs, DeletingAMarkJoinsParagraphsWithTheSecondsProperties) {
    StoryXml doc("<w:p><w:pPr><w:jc w:val=\"left\"/></w:pPr><w:r><w:t>ab</w:t></w:r></w:p>"
                 "<w:p><w:pPr><w:jc w:val=\"center\"/></w:pPr><w:r><w:t>cd</w:t></w:r></w:p>");
    StoryEditor(doc.story()).replace({1, 4}, "X");
    EXPECT_EQ(doc.text(), "aXd\r");
    EXPECT_STREQ(doc.body().first_child().child("w:pPr").child("w:jc").attribute("w:val").value(), "center");
}

TEST(StoryEditorParagraphs, NeverJoinsTheLastParagraphOfACellWithWhatFollows) {
    StoryXml doc("<w:tbl><w:tr><w:tc><w:p><w:r><w:t>a</w:t></w:r></w:p></w:tc></w:tr></w:tbl>"
                 "<w:p><w:r><w:t>b</w:t></w:r></w:p>");
    StoryEditor(doc.story()).replace({0, 3}, "");
    EXPECT_EQ(doc.text(), "\r\r");
}

TEST(StoryEditorCode, ReplacesAComplexFieldsCodeByOneInstrTextRun) {
    StoryXml doc("<w:p>" + fieldRuns(" MERGEFIELD A ", "«A»", "") + "</w:p>");
    auto& story = doc.story();
    StoryEditor(story).setFieldCode(story.map().items[story.map().fields[0].begin].node, " MERGEFIELD B ");
    EXPECT_EQ(story.map().fields.at(0).code, " MERGEFIELD B ");
    EXPECT_EQ(doc.text(), "«A»\r");
}

} // namespace
} // namespace wordbm::ooxml
