#include "CorpusFiles.h"
#include "engine/ooxml/DocxDocument.h"
#include "engine/ooxml/Package.h"
#include "engine/ooxml/StoryListing.h"
#include "engine/ooxml/TemporaryFolder.h"
#include "engine/word/AutomationError.h"

#include <gtest/gtest.h>
#include <map>
#include <set>

namespace wordbm::ooxml {
namespace {

using test::corpusPath;

// An independent reading of one part: bookmark names and field begins straight from the XML,
// leaving out mc:Fallback copies.
struct PartCounts {
    std::multiset<std::string> bookmarks;
    int fields = 0;
    int mergeFields = 0;
};

bool within(pugi::xml_node node, std::string_view ancestor) {
    for (auto at = node.parent(); at; at = at.parent()) {
        if (ancestor == at.name()) {
            return true;
        }
    }
    return false;
}

int occurrences(const std::string& text, const std::string& word) {
    int count = 0;
    for (auto at = text.find(word); at != std::string::npos; at = text.find(word, at + 1)) {
        ++count;
    }
    return count;
}

PartCounts readPart(pugi::xml_document& xml) {
    PartCounts counts;
    std::string codes;
    for (auto node : xml.select_nodes("//w:bookmarkStart | //w:fldChar[@w:fldCharType='begin'] | "
                                      "//w:fldSimple | //w:instrText")) {
        const auto element = node.node();
        // Word's note stories leave out the separator notes.
        const auto note = element.select_node("ancestor::w:footnote[@w:type] | ancestor::w:endnote[@w:type]");
        if (within(element, "mc:Fallback") || within(element, "w:del") || note) {
            continue;
        }
        const std::string_view name = element.name();
        if (name == "w:bookmarkStart") {
            counts.bookmarks.insert(element.attribute("w:name").value());
        } else if (name == "w:instrText") {
            codes += element.child_value();
        } else {
            ++counts.fields;
            if (name == "w:fldSimple") {
                codes += element.attribute("w:instr").value();
            }
        }
    }
    counts.mergeFields = occurrences(codes, "MERGEFIELD");
    return counts;
}

class CorpusReading : public ::testing::TestWithParam<std::string> {};

TEST_P(CorpusReading, BookmarksAndFieldsPerPartMatchAnIndependentReadingOfTheXml) {
    const auto name = GetParam();
    auto document = DocxDocument::open(corpusPath(name));
    std::map<std::string, PartCounts> ours;
    for (auto* story : document->stories().all()) {
        auto& counts = ours[story->partName()];
        const auto& map = story->map();
        for (const auto& mark : map.bookmarks) {
            counts.bookmarks.insert(mark.name);
        }
        counts.fields += static_cast<int>(map.fields.size());
        for (const auto& field : map.fields) {
            counts.mergeFields += occurrences(field.simple ? field.code : std::string(), "MERGEFIELD");
        }
        for (const auto& field : map.fields) {
            // A field nested in another's code is part of that code too: count each code once.
            const auto* parent = field.parent < 0 ? nullptr : &map.fields[field.parent];
            const bool inParentsCode =
                parent && !parent->simple && (parent->separate < 0 || field.begin < parent->separate);
            if (!field.simple && !inParentsCode) {
                counts.mergeFields += occurrences(field.code, "MERGEFIELD");
            }
        }
    }
    for (const auto& [part, counts] : ours) {
        const auto expected = readPart(document->package().xml(part));
        EXPECT_EQ(counts.bookmarks, expected.bookmarks) << name << " " << part;
        EXPECT_EQ(counts.fields, expected.fields) << name << " " << part;
        EXPECT_EQ(counts.mergeFields, expected.mergeFields) << name << " " << part;
    }
}

TEST_P(CorpusReading, ANoOpSaveGivesTheSameTextAndBookmarksOnReopening) {
    const auto name = GetParam();
    TemporaryFolder folder;
    auto original = DocxDocument::open(corpusPath(name));
    const auto before = StoryListing::stories(*original);
    std::vector<std::string> textsBefore;
    for (auto* story : original->stories().all()) {
        textsBefore.push_back(story->map().text(0, story->length()));
    }
    original->SaveAs2(folder.path() + "/" + name);
    EXPECT_TRUE(original->Saved());
    auto reopened = DocxDocument::open(folder.path() + "/" + name);
    const auto after = StoryListing::stories(*reopened);
    std::vector<std::string> textsAfter;
    for (auto* story : reopened->stories().all()) {
        textsAfter.push_back(story->map().text(0, story->length()));
    }
    EXPECT_EQ(textsAfter, textsBefore);
    ASSERT_EQ(after.size(), before.size());
    for (std::size_t i = 0; i < before.size(); ++i) {
        ASSERT_EQ(after[i].bookmarks.size(), before[i].bookmarks.size()) << after[i].story;
        for (std::size_t b = 0; b < before[i].bookmarks.size(); ++b) {
            EXPECT_EQ(after[i].bookmarks[b].name, before[i].bookmarks[b].name);
            EXPECT_EQ(after[i].bookmarks[b].text, before[i].bookmarks[b].text);
        }
    }
    EXPECT_EQ(reopened->package().isMacroEnabled(), name.ends_with(".docm"));
}

std::string testName(const ::testing::TestParamInfo<std::string>& info) {
    std::string name;
    for (const char c : info.param) {
        name += std::isalnum(static_cast<unsigned char>(c)) ? c : '_';
    }
    return name;
}

INSTANTIATE_TEST_SUITE_P(Corpus, CorpusReading, ::testing::ValuesIn(test::corpusDocuments()), testName);

} // namespace
} // namespace wordbm::ooxml
