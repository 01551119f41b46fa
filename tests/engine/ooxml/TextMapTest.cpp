#include "StoryXml.h"

#include <gtest/gtest.h>

namespace wordbm::ooxml {
namespace {

using test::StoryXml;

std::string run(const std::string& content, const std::string& props = "") {
    return "<w:r>" + (props.empty() ? "" : "<w:rPr>" + props + "</w:rPr>") + content + "</w:r>";
}
std::string t(const std::string& text) {
    return run("<w:t xml:space=\"preserve\">" + text + "</w:t>");
}
std::string fld(const char* type) {
    return run(std::string("<w:fldChar w:fldCharType=\"") + type + "\"/>");
}
std::string instr(const std::string& code) {
    return run("<w:instrText xml:space=\"preserve\">" + code + "</w:instrText>");
}

TEST(TextMapText, CountsResultsNotCodesAndOneCharacterPerSpecialRunChild) {
    StoryXml doc("<w:p>" + t("a") + run("<w:tab/><w:br/><w:sym w:font=\"Wingdings\" w:char=\"F0E0\"/>") +
                 fld("begin") + instr(" MERGE") + instr("FIELD KliName ") + fld("separate") + t("«KliName»") +
                 fld("end") + "</w:p><w:p/>");
    const auto& map = doc.story().map();
    EXPECT_EQ(doc.text(), "a\t\v\xEF\x83\xA0«KliName»\r\r");
    EXPECT_EQ(map.length(), 4 + 9 + 2);
    ASSERT_EQ(map.fields.size(), 1u);
    EXPECT_EQ(map.fields[0].code, " MERGEFIELD KliName ");
    EXPECT_EQ(map.fieldStart(0), 4);
    EXPECT_EQ(map.fieldEnd(0), 13);
}

TEST(TextMapText, CountsCharactersOutsideTheBasicPlaneTwiceAsWordDoes) {
    StoryXml doc("<w:p>" + t("a\xF0\x9F\x98\x80z") + "</w:p>");
    EXPECT_EQ(doc.story().length(), 5);
    EXPECT_EQ(doc.story().map().text(1, 3), "\xF0\x9F\x98\x80");
    EXPECT_EQ(doc.story().map().text(3, 4), "z");
}

TEST(TextMapText, LeavesDeletedTextAndDeletedCodesOut) {
    StoryXml doc("<w:p>" + t("keep") + "<w:del w:id=\"1\"><w:r><w:delText>gone</w:delText></w:r></w:del>" +
                 fld("begin") + run("<w:delInstrText> PAGE </w:delInstrText>") + instr(" MERGEFORMAT ") +
                 fld("end") + "<w:ins w:id=\"2\">" + t("new") + "</w:ins></w:p>");
    EXPECT_EQ(doc.text(), "keepnew\r");
    EXPECT_EQ(doc.story().map().fields.at(0).code, " MERGEFORMAT ");
}

TEST(TextMapFields, NestedCodesBelongToTheOuterCodeButNestedResultsDoNot) {
    StoryXml doc("<w:p>" + fld("begin") + instr(" IF ") + fld("begin") + instr(" MERGEFIELD A ") +
                 fld("separate") + instr("«A»") + fld("end") + instr(" = \"x\" \"yes\" \"no\" ") +
                 fld("separate") + t("no") + fld("end") + "</w:p>");
    const auto& map = doc.story().map();
    ASSERT_EQ(map.fields.size(), 2u);
    EXPECT_EQ(map.fields[0].code, " IF  MERGEFIELD A  = \"x\" \"yes\" \"no\" ");
    EXPECT_EQ(map.fields[1].code, " MERGEFIELD A ");
    EXPECT_EQ(map.fields[1].parent, 0);
    EXPECT_EQ(doc.text(), "no\r");
}

TEST(TextMapFields, ReadsFieldsWithoutResultSimpleFieldsAndEmptyCodes) {
    StoryXml doc("<w:p>" + fld("begin") + instr(" MERGEFIELD Name ") + fld("end") +
                 "<w:fldSimple w:instr=\" MERGEFIELD Ort \">" + t("«Ort»") + "</w:fldSimple>" + fld("begin") +
                 instr("  ") + fld("end") + "</w:p>");
    const auto& map = doc.story().map();
    ASSERT_EQ(map.fields.size(), 3u);
    EXPECT_EQ(map.fields[0].separate, -1);
    EXPECT_EQ(map.fieldStart(0), map.fieldEnd(0));
    EXPECT_TRUE(map.fields[1].simple);
    EXPECT_EQ(map.fields[1].code, " MERGEFIELD Ort ");
    EXPECT_EQ(map.fields[2].code, "  ");
    EXPECT_EQ(doc.text(), "«Ort»\r");
}

TEST(TextMapFields, IgnoresFieldCharactersThatDoNotPairUp) {
    StoryXml doc("<w:p>" + fld("end") + t("a") + fld("begin") + instr(" PAGE ") + "</w:p><w:p>" + t("b") +
                 "</w:p>");
    EXPECT_TRUE(doc.story().map().fields.empty());
    EXPECT_EQ(doc.text(), "a\rb\r");
}

TEST(TextMapBookmarks, MatchesStartAndEndByIdAcrossParagraphsAndTableLevels) {
    StoryXml doc("<w:bookmarkStart w:id=\"7\" w:name=\"Outer\"/><w:p>" + t("ab") +
                 "<w:bookmarkStart w:id=\"8\" w:name=\"Inner\"/>" + t("cd") +
                 "<w:bookmarkEnd w:id=\"8\"/></w:p>" + "<w:tbl><w:tr><w:tc><w:p>" + t("e") +
                 "</w:p></w:tc></w:tr></w:tbl><w:bookmarkEnd w:id=\"7\"/>"
                 "<w:p><w:bookmarkStart w:id=\"9\" w:name=\"Open\"/></w:p>");
    const auto& marks = doc.story().map().bookmarks;
    ASSERT_EQ(marks.size(), 2u);
    EXPECT_EQ(marks[0].name, "Outer");
    EXPECT_EQ(marks[0].start, 0);
    EXPECT_EQ(marks[0].end, 7);
    EXPECT_EQ(marks[1].name, "Inner");
    EXPECT_EQ(doc.story().map().text(marks[1].start, marks[1].end), "cd");
}

TEST(TextMapWalk, SurvivesDeepNestingWithoutRecursion) {
    std::string deep;
    for (int i = 0; i < 100000; ++i) {
        deep += "<w:sdt><w:sdtContent>";
    }
    deep += "<w:p>" + t("x") + "</w:p>";
    for (int i = 0; i < 100000; ++i) {
        deep += "</w:sdtContent></w:sdt>";
    }
    StoryXml doc(deep);
    EXPECT_EQ(doc.text(), "x\r");
}

} // namespace
} // namespace wordbm::ooxml
