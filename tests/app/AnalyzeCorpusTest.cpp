// The analysis counts of every corpus document against a reading of its XML that follows Word's
// object model: Document.Fields is the main text only, Document.Shapes its floating shapes, every
// section has three headers and three footers (a missing one is the previous section's), and a
// header's Shapes are the floating shapes of all headers and footers of the document.
#include "CorpusXml.h"
#include "app/EngineVerbs.h"
#include "data/KnownFields.h"
#include "data/MergeFieldName.h"
#include "kit/EnvGuard.h"
#include "kit/FileBytes.h"
#include "kit/TempDir.h"

#include <array>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <regex>
#include <set>
#include <sstream>

namespace wordbm::testing {
namespace {

namespace fs = std::filesystem;

struct Counts {
    int total = 0;
    int known = 0;
    bool operator==(const Counts&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Counts& counts) {
    return out << counts.total << " total, " << counts.known << " known";
}

struct Analysis {
    Counts bookmarks;
    Counts mergeFields;
    // Known merge fields counted once however often the walk reaches them.
    int knownPlaces = 0;
};

bool hasText(pugi::xml_node content) {
    for (const auto& t : content.select_nodes(".//w:t")) {
        if (*t.node().text().get() != '\0') {
            return true;
        }
    }
    return false;
}

// The text of the floating shapes anchored in a story: drawings with a text box and VML shapes
// placed absolutely. Inline shapes, groups, canvases and the Fallback copies hold no text frame.
std::vector<pugi::xml_node> floatingTextBoxes(pugi::xml_node story) {
    std::vector<pugi::xml_node> boxes;
    forEachElement(story, [&boxes](pugi::xml_node node) {
        if (named(node, "wp:anchor")) {
            boxes.push_back(
                node.first_element_by_path("a:graphic/a:graphicData/wps:wsp/wps:txbx/w:txbxContent"));
        } else if (named(node, "w:pict")) {
            for (const pugi::xml_node shape : node.children()) {
                if (std::regex_search(shape.attribute("style").value(),
                                      std::regex("position:\\s*absolute"))) {
                    boxes.push_back(shape.first_element_by_path("v:textbox/w:txbxContent"));
                }
            }
        }
        return !named(node, "wp:anchor") && !named(node, "w:pict") && !named(node, "w:object") &&
               !named(node, "wp:inline");
    });
    std::erase_if(boxes, [](pugi::xml_node box) { return !box || !hasText(box); });
    return boxes;
}

std::vector<pugi::xml_node> sectionProperties(pugi::xml_node body) {
    std::vector<pugi::xml_node> sections;
    forEachElement(body, [&sections](pugi::xml_node node) {
        if (named(node, "w:sectPr")) {
            sections.push_back(node);
        }
        return !named(node, "w:sectPr") && !named(node, "w:pPrChange");
    });
    return sections;
}

class XmlAnalysis {
public:
    XmlAnalysis(const CorpusXml& xml, const KnownFields& known) : xml_(xml), known_(known) {}

    Analysis read() {
        readBookmarks();
        readMergeFields();
        analysis_.knownPlaces = static_cast<int>(knownPlaces_.size());
        return analysis_;
    }

private:
    void readBookmarks() {
        for (const auto& part : xml_.partNames()) {
            for (const auto& name : bookmarksIn(xml_.root(part))) {
                if (name.rfind('_', 0) == 0) {
                    continue; // hidden, as Word lists bookmarks by default
                }
                ++analysis_.bookmarks.total;
                analysis_.bookmarks.known += !known_.BookmarkFieldGet(name).empty();
            }
        }
    }

    void addFields(pugi::xml_node story) {
        for (const auto& field : fieldsIn(story, true)) {
            if (const auto name = MergeFieldName(field.code)) {
                ++analysis_.mergeFields.total;
                if (!known_.FieldKnown(*name).empty()) {
                    ++analysis_.mergeFields.known;
                    knownPlaces_.insert(field.simple ? field.simple : field.instructions.front());
                }
            }
        }
    }

    void readMergeFields() {
        const pugi::xml_node body = xml_.root("word/document.xml").child("w:body");
        addFields(body);
        for (const auto box : floatingTextBoxes(body)) {
            addFields(box);
        }
        // Each section's header or footer of each kind, the previous section's where it has none.
        std::array<std::string, 6> current;
        std::vector<std::array<std::string, 6>> sections;
        std::set<std::string> allParts;
        for (const auto properties : sectionProperties(body)) {
            for (const auto reference : properties.children()) {
                const bool header = named(reference, "w:headerReference");
                if (!header && !named(reference, "w:footerReference")) {
                    continue;
                }
                const std::string_view type = reference.attribute("w:type").value();
                const int slot = (header ? 0 : 3) + (type == "first" ? 1 : type == "even" ? 2 : 0);
                current[slot] = xml_.documentTarget(reference.attribute("r:id").value());
                allParts.insert(current[slot]);
            }
            sections.push_back(current);
        }
        for (const auto& parts : sections) {
            for (const auto& part : parts) {
                for (const auto& any : allParts) {
                    for (const auto box : floatingTextBoxes(xml_.root(any))) {
                        addFields(box);
                    }
                }
                if (!part.empty()) {
                    addFields(xml_.root(part));
                }
            }
        }
    }

    const CorpusXml& xml_;
    const KnownFields& known_;
    Analysis analysis_;
    std::set<pugi::xml_node> knownPlaces_;
};

Counts countsOf(const std::string& report, const std::string& head) {
    std::smatch match;
    const std::regex line(head + ": (\\d+)-total, (\\d+)-bekannt, (\\d+)-unbekannt");
    if (!std::regex_search(report, match, line)) {
        ADD_FAILURE() << "no line " << head << " in " << report;
        return {};
    }
    const Counts counts{std::stoi(match[1]), std::stoi(match[2])};
    EXPECT_EQ(std::stoi(match[3]), counts.total - counts.known) << report;
    return counts;
}

void setCode(const XmlField& field, const std::string& code) {
    if (field.simple) {
        field.simple.attribute("w:instr").set_value(code.c_str());
        return;
    }
    for (std::size_t i = 0; i < field.instructions.size(); ++i) {
        field.instructions[i].text().set(i == 0 ? code.c_str() : "");
    }
}

class AnalyzeCorpus : public ::testing::Test {
protected:
    AnalyzeCorpus()
        : base_("TARVELL_DEBUG", folder_.path().string()), config_("XDG_CONFIG_HOME", folder_ / "config") {
        known_.FieldsBESR();
    }

    static std::vector<fs::path> documents(bool strict = false) {
        std::vector<fs::path> found;
        for (const auto& entry : fs::directory_iterator(fs::path(WORDBM_CORPUS_DIR) / "docx")) {
            const auto extension = entry.path().extension();
            if ((extension == ".docx" || extension == ".docm") &&
                CorpusXml::isStrict(entry.path()) == strict) {
                found.push_back(entry.path());
            }
        }
        std::sort(found.begin(), found.end());
        return found;
    }

    // The counts `wordbm analyze` prints, beside those of the XML.
    Analysis analyze(const fs::path& form, Analysis& expected) {
        std::ostringstream out;
        std::ostringstream err;
        EXPECT_EQ(EngineVerbs(out, err, false).analyze(form.string(), false), EngineVerbs::ExitFine)
            << form << ": " << err.str();
        expected = XmlAnalysis(CorpusXml(form), known_).read();
        return {countsOf(out.str(), "Textfelder"), countsOf(out.str(), "Seriendruckfelder")};
    }

    // A copy of the form in which every field that neither holds nor sits in another one is a merge
    // field, every second one with a known name, so that fields in all kinds of places are counted.
    fs::path withMergeFields(const fs::path& form) {
        CorpusXml xml(form);
        std::vector<std::string> names;
        for (const auto& item : known_.Items()) {
            if (item != KnownFields::Separator && item.rfind("ESQR", 0) != 0) {
                names.push_back(item);
            }
        }
        std::vector<std::string> changed;
        int seen = 0;
        for (const auto& part : xml.partNames()) {
            const auto fields = fieldsIn(xml.root(part), false);
            for (const auto& field : fields) {
                if (field.nested) {
                    continue;
                }
                const bool known = seen++ % 2 == 0;
                setCode(field, known ? " MERGEFIELD " + names[seen % names.size()] + " "
                                     : " MERGEFIELD Fremd" + std::to_string(seen) + " \\* MERGEFORMAT ");
            }
            if (!fields.empty()) {
                changed.push_back(part);
            }
        }
        const fs::path copy = folder_ / ("Bekannt-" + form.filename().string());
        xml.saveCopy(copy, changed);
        return copy;
    }

    TempDir folder_;
    EnvGuard base_;
    EnvGuard config_;
    KnownFields known_;
};

TEST_F(AnalyzeCorpus, CountsOfEveryDocumentMatchItsXml) {
    int documentsWithMergeFields = 0;
    const auto forms = documents();
    for (const auto& form : forms) {
        Analysis expected;
        const Analysis found = analyze(form, expected);
        EXPECT_EQ(found.bookmarks, expected.bookmarks) << form;
        EXPECT_EQ(found.mergeFields, expected.mergeFields) << form;
        documentsWithMergeFields += expected.mergeFields.total > 0;
    }
    EXPECT_GE(forms.size(), 55u);
    EXPECT_GE(documentsWithMergeFields, 8);

    for (const auto& form : documents(true)) {
        std::ostringstream out;
        std::ostringstream err;
        EXPECT_EQ(EngineVerbs(out, err, false).analyze(form.string(), false), EngineVerbs::ExitUnusable)
            << form;
        EXPECT_NE(err.str().find("Strict Open XML"), std::string::npos) << err.str();
    }
}

TEST_F(AnalyzeCorpus, ConvertTurnsTheKnownMergeFieldsIntoBookmarksAndLeavesTheOthers) {
    int converted = 0;
    for (const auto& original : documents()) {
        const fs::path form = withMergeFields(original);
        Analysis expected;
        const Analysis found = analyze(form, expected);
        ASSERT_EQ(found.mergeFields, expected.mergeFields) << form;
        if (found.mergeFields.known == 0) {
            continue;
        }

        const fs::path output = folder_ / "Konvertiert.docx";
        std::ostringstream out;
        std::ostringstream err;
        ASSERT_EQ(EngineVerbs(out, err, false).convert(form.string(), output.string()), EngineVerbs::ExitFine)
            << form << ": " << err.str();
        std::smatch match;
        const std::string report = out.str();
        ASSERT_TRUE(std::regex_search(report, match, std::regex("(\\d+) Seriendruckfelder "))) << report;
        const int replaced = std::stoi(match[1]);
        EXPECT_EQ(replaced, expected.knownPlaces) << form << report;

        Analysis convertedXml;
        const Analysis after = analyze(output, convertedXml);
        EXPECT_EQ(after.mergeFields, convertedXml.mergeFields) << form;
        EXPECT_EQ(after.bookmarks, convertedXml.bookmarks) << form;
        EXPECT_EQ(after.mergeFields.known, 0) << form;
        EXPECT_EQ(after.mergeFields.total, found.mergeFields.total - found.mergeFields.known) << form;
        // Bookmarks inside a replaced field's result go with it; the new ones are all known.
        EXPECT_EQ(after.bookmarks.known, found.bookmarks.known + replaced) << form;
        fs::remove(output);
        ++converted;
    }
    EXPECT_GE(converted, 20);
}

} // namespace
} // namespace wordbm::testing
