#include "CorpusFiles.h"
#include "StoryXml.h"
#include "engine/ooxml/BookmarkIndex.h"
#include "engine/ooxml/DocxDocument.h"
#include "engine/ooxml/FenwickTree.h"
#include "engine/ooxml/StoryEditor.h"
#include "engine/ooxml/TextMapBuilder.h"

#include <gtest/gtest.h>
#include <random>

namespace wordbm::ooxml {
namespace {

using test::StoryXml;

// A cut as the node it stands before (null: behind the last item) and the units into it, so that
// cuts of a window and of the whole story can be compared.
std::pair<pugi::xml_node, long> place(const TextMap& map, const Cut& cut) {
    const bool behind = cut.item >= static_cast<int>(map.items.size());
    return {behind ? pugi::xml_node() : map.items[static_cast<std::size_t>(cut.item)].node, cut.inner};
}

// Everything the windows tell about the story agrees with a table of the whole story read anew.
void expectLikeWhole(Story& story, const std::string& where) {
    SCOPED_TRACE(where);
    const auto whole = TextMapBuilder::build(story.root());
    ASSERT_EQ(story.length(), whole.length());
    ASSERT_EQ(story.hasParagraph(), std::any_of(whole.items.begin(), whole.items.end(), [](const auto& item) {
                  return item.kind == ItemKind::ParagraphMark;
              }));
    const long step = std::max(1L, whole.length() / 400);
    for (long offset = 0; offset <= whole.length(); offset += step) {
        const auto& window = story.window(offset, std::min(whole.length(), offset + 3)).map;
        ASSERT_EQ(window.text(offset, offset + 3), whole.text(offset, offset + 3)) << offset;
        ASSERT_EQ(place(window, window.startCut(offset)), place(whole, whole.startCut(offset))) << offset;
        ASSERT_EQ(place(window, window.endCut(offset)), place(whole, whole.endCut(offset))) << offset;
        ASSERT_EQ(window.offsetOf(window.startCut(offset)), whole.offsetOf(whole.startCut(offset)));
    }
    for (int f = 0; f < static_cast<int>(whole.fields.size()); ++f) {
        const auto begin = whole.items[static_cast<std::size_t>(whole.fields[f].begin)].node;
        ASSERT_TRUE(story.fieldAlive(begin));
        const auto& window = story.windowHolding(begin).map;
        const int same = window.fieldOf(begin);
        ASSERT_GE(same, 0);
        EXPECT_EQ(window.fieldStart(same), whole.fieldStart(f));
        EXPECT_EQ(window.fieldEnd(same), whole.fieldEnd(f));
        EXPECT_EQ(window.fields[same].code, whole.fields[f].code);
    }
    for (const auto& mark : whole.bookmarks) {
        EXPECT_EQ(story.offsetOf(whole.items[static_cast<std::size_t>(mark.startItem)].node), mark.start);
    }
}

const std::string Field = "<w:r><w:fldChar w:fldCharType=\"begin\"/></w:r><w:r><w:instrText> MERGEFIELD Name "
                          "</w:instrText></w:r><w:r><w:fldChar w:fldCharType=\"separate\"/></w:r>";
const std::string FieldEnd = "<w:r><w:fldChar w:fldCharType=\"end\"/></w:r>";

std::string paragraph(const std::string& text) {
    return "<w:p><w:r><w:t xml:space=\"preserve\">" + text + "</w:t></w:r></w:p>";
}

TEST(FenwickTree, FindsTheStretchHoldingAnOffsetAcrossEmptyOnesAndFollowsChanges) {
    FenwickTree tree({3, 0, 4, 1, 0, 2});
    EXPECT_EQ(tree.total(), 10);
    EXPECT_EQ(tree.before(3), 7);
    EXPECT_EQ(tree.holding(0), 0);
    EXPECT_EQ(tree.holding(3), 2) << "an empty stretch holds no offset";
    EXPECT_EQ(tree.holding(7), 3);
    EXPECT_EQ(tree.holding(8), 5);
    EXPECT_EQ(tree.holding(10), 6);
    tree.set(1, 5);
    tree.set(5, 0);
    EXPECT_EQ(tree.total(), 13);
    EXPECT_EQ(tree.holding(3), 1);
    EXPECT_EQ(tree.holding(12), 3);
    EXPECT_EQ(tree.holding(13), 6);
    for (int i = 0; i <= tree.size(); ++i) {
        long sum = 0;
        for (int j = 0; j < i; ++j) {
            sum += tree.value(j);
        }
        EXPECT_EQ(tree.before(i), sum) << i;
    }
}

TEST(StorySegmentsEditing, EditsAtSegmentBordersJoinAndSplitParagraphsLikeTheWholeStory) {
    StoryXml doc(paragraph("eins") + "<w:bookmarkStart w:id=\"1\" w:name=\"Zwischen\"/>" + paragraph("zwei") +
                 "<w:bookmarkEnd w:id=\"1\"/>" + paragraph("drei") + paragraph("vier"));
    auto& story = doc.story();
    expectLikeWhole(story, "read");
    StoryEditor(story).replace({4, 6}, "");
    EXPECT_EQ(doc.text(), "einswei\rdrei\rvier\r");
    expectLikeWhole(story, "mark between two segments deleted");
    StoryEditor(story).replace({7, 7}, "X\r\rY");
    EXPECT_EQ(doc.text(), "einsweiX\r\rY\rdrei\rvier\r");
    expectLikeWhole(story, "paragraphs typed at a segment's end");
    StoryEditor(story).replace({12, 12}, "Z");
    expectLikeWhole(story, "typed at a segment's start");
    StoryEditor(story).addBookmark({0, story.length()}, "Alles", "7");
    expectLikeWhole(story, "bookmark over every segment");
    StoryEditor(story).removeBookmark("1");
    expectLikeWhole(story, "bookmark between paragraphs removed");
}

TEST(StorySegmentsEditing, AFieldOverSeveralParagraphsStaysInOneSegmentAndGoesWhole) {
    StoryXml doc(paragraph("vor") + "<w:p>" + Field + "<w:r><w:t>Ergebnis</w:t></w:r></w:p><w:p>" +
                 "<w:r><w:t>weiter</w:t></w:r>" + FieldEnd + "<w:r><w:t>nach</w:t></w:r></w:p>" +
                 paragraph("Ende"));
    auto& story = doc.story();
    expectLikeWhole(story, "read");
    const auto begin = doc.body().child("w:p").next_sibling().child("w:r").child("w:fldChar");
    ASSERT_TRUE(story.fieldAlive(begin));
    StoryEditor(story).replace({0, 0, FieldPart::Whole, begin}, "Feld weg");
    EXPECT_EQ(doc.text(), "vor\rFeld wegnach\rEnde\r");
    EXPECT_FALSE(story.fieldAlive(begin));
    expectLikeWhole(story, "field replaced");
    // A span from one segment into another across a field's begin keeps the field's markers.
    StoryXml again(paragraph("a") + "<w:p><w:r><w:t>b</w:t></w:r>" + Field + "<w:r><w:t>c</w:t></w:r>" +
                   FieldEnd + "</w:p>" + paragraph("d"));
    StoryEditor(again.story()).replace({1, 4}, "");
    expectLikeWhole(again.story(), "span into a field");
}

TEST(StorySegmentsEditing, DeletingEverythingAndTypingItBackLeavesTheSameStory) {
    const std::string body = paragraph("Kunde") +
                             "<w:p><w:bookmarkStart w:id=\"3\" w:name=\"KliName\"/>"
                             "<w:r><w:t>[KliName]</w:t></w:r><w:bookmarkEnd w:id=\"3\"/></w:p>" +
                             paragraph("Gruss");
    StoryXml doc(body);
    auto& story = doc.story();
    const auto original = doc.text();
    StoryEditor(story).replace({0, story.length() - 1}, "");
    EXPECT_EQ(doc.text(), "\r");
    expectLikeWhole(story, "all deleted");
    StoryEditor(story).replace({0, 0}, original.substr(0, original.size() - 1));
    EXPECT_EQ(doc.text(), original);
    expectLikeWhole(story, "typed back");
    StoryEditor(story).replace({6, 15}, "Muster");
    StoryEditor(story).replace({6, 12}, "[KliName]");
    EXPECT_EQ(doc.text(), original);
    expectLikeWhole(story, "replaced and replaced back");
}

// Random edits on every story of every corpus document: after each, the windows agree with the
// whole story, and the bookmark index that followed the edits with one read anew.
TEST(StorySegmentsEditing, RandomEditsOnCorpusDocumentsKeepWindowsAndIndexTrue) {
    std::mt19937 random(14);
    int stories = 0;
    for (const auto& name : test::corpusDocuments()) {
        std::shared_ptr<DocxDocument> document;
        try {
            document = DocxDocument::open(test::corpusPath(name));
        } catch (const std::exception&) {
            continue; // refused documents are tested elsewhere
        }
        for (auto* story : document->stories().all()) {
            if (!story->hasParagraph()) {
                continue;
            }
            ++stories;
            for (int edit = 0; edit < 12 && story->alive(); ++edit) {
                const long length = story->length();
                const long start = std::uniform_int_distribution<long>(0, length - 1)(random);
                const long end =
                    std::min(length - 1, start + std::uniform_int_distribution<long>(0, 12)(random));
                const auto what = edit % 4;
                try {
                    if (what == 0) {
                        document->replace(*story, {start, end}, "neu\rZeile");
                    } else if (what == 1) {
                        document->addBookmark("Test" + std::to_string(edit), *story, {start, end});
                    } else if (what == 2) {
                        document->replace(*story, {start, end}, "");
                    } else if (const auto* mark =
                                   document->bookmarkIndex().find("Test" + std::to_string(edit - 2))) {
                        document->deleteBookmark(*mark);
                    }
                } catch (const std::exception&) {
                    continue; // a place the word processor refuses is refused alike by both
                }
                expectLikeWhole(*story, name + " " + story->name() + " edit " + std::to_string(edit));
                const auto& followed = document->bookmarkIndex();
                BookmarkIndex fresh(document->stories().all());
                ASSERT_EQ(followed.sorted().size(), fresh.sorted().size()) << name;
                for (std::size_t i = 0; i < fresh.sorted().size(); ++i) {
                    const auto a = document->located(*followed.sorted()[i]);
                    const auto b = document->located(*fresh.sorted()[i]);
                    EXPECT_EQ(a.name, b.name);
                    EXPECT_EQ(a.start, b.start) << a.name;
                    EXPECT_EQ(a.end, b.end) << a.name;
                }
                EXPECT_EQ(followed.nextId(), fresh.nextId());
            }
        }
    }
    EXPECT_GT(stories, 30);
}

} // namespace
} // namespace wordbm::ooxml
