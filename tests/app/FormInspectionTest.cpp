#include "app/FormInspection.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <pugixml.hpp>
#include <regex>
#include <sstream>
#include <vector>
#include <zip.h>

namespace wordbm {
namespace {

namespace fs = std::filesystem;

struct XmlReading {
    std::vector<std::string> bookmarks;
    int mergeFields = 0;
};

bool inFallback(pugi::xml_node node) {
    for (auto up = node.parent(); up; up = up.parent()) {
        if (std::string_view(up.name()) == "mc:Fallback") {
            return true;
        }
    }
    return false;
}

bool isMergeCode(std::string code) {
    code.erase(0, code.find_first_not_of(' '));
    return code.rfind("MERGEFIELD ", 0) == 0;
}

// Fields by a stack over fldChar: code text goes to the innermost field while it is still in its
// code; a nested result stored as instrText after its separate belongs to no code.
struct FieldCounter : pugi::xml_tree_walker {
    struct Open {
        std::string code;
        bool inResult = false;
    };
    std::vector<Open> open;
    int merge = 0;
    std::vector<std::string>* bookmarks = nullptr;

    bool for_each(pugi::xml_node& node) override {
        const std::string_view name = node.name();
        if ((name == "w:fldChar" || name == "w:instrText" || name == "w:fldSimple" ||
             name == "w:bookmarkStart") &&
            inFallback(node)) {
            return true;
        }
        if (name == "w:bookmarkStart") {
            bookmarks->push_back(node.attribute("w:name").value());
        } else if (name == "w:fldSimple") {
            merge += isMergeCode(node.attribute("w:instr").value());
        } else if (name == "w:instrText" && !open.empty() && !open.back().inResult) {
            open.back().code += node.text().get();
        } else if (name == "w:fldChar") {
            const std::string_view type = node.attribute("w:fldCharType").value();
            if (type == "begin") {
                open.push_back({});
            } else if (type == "separate" && !open.empty()) {
                open.back().inResult = true;
            } else if (type == "end" && !open.empty()) {
                merge += isMergeCode(open.back().code);
                open.pop_back();
            }
        }
        return true;
    }
};

XmlReading readXml(const fs::path& path) {
    XmlReading reading;
    int error = 0;
    zip_t* archive = zip_open(path.c_str(), ZIP_RDONLY, &error);
    if (!archive) {
        return reading;
    }
    const std::regex storyPart("word/(document|header[0-9]*|footer[0-9]*|footnotes|endnotes)\\.xml");
    for (zip_int64_t i = 0; i < zip_get_num_entries(archive, 0); ++i) {
        const std::string name = zip_get_name(archive, static_cast<zip_uint64_t>(i), 0);
        zip_stat_t stat;
        if (!std::regex_match(name, storyPart) ||
            zip_stat_index(archive, static_cast<zip_uint64_t>(i), 0, &stat)) {
            continue;
        }
        std::string bytes(stat.size, '\0');
        zip_file_t* file = zip_fopen_index(archive, static_cast<zip_uint64_t>(i), 0);
        zip_fread(file, bytes.data(), stat.size);
        zip_fclose(file);
        pugi::xml_document xml;
        xml.load_buffer(bytes.data(), bytes.size(), pugi::parse_default | pugi::parse_ws_pcdata);
        FieldCounter counter;
        counter.bookmarks = &reading.bookmarks;
        xml.traverse(counter);
        reading.mergeFields += counter.merge;
    }
    zip_close(archive);
    return reading;
}

XmlReading readJson(const std::string& json) {
    XmlReading reading;
    const std::regex bookmark("\\{\"name\":\"((?:[^\"\\\\]|\\\\.)*)\",\"hidden\":");
    for (std::sregex_iterator it(json.begin(), json.end(), bookmark), end; it != end; ++it) {
        reading.bookmarks.push_back((*it)[1]);
    }
    const std::regex merge("\"merge_name\":\"");
    reading.mergeFields = static_cast<int>(
        std::distance(std::sregex_iterator(json.begin(), json.end(), merge), std::sregex_iterator()));
    return reading;
}

bool isStrict(const fs::path& path) {
    std::ifstream manifest(fs::path(WORDBM_CORPUS_DIR) / "docx" / "MANIFEST.tsv");
    for (std::string line; std::getline(manifest, line);) {
        if (line.rfind(path.filename().string() + "\t", 0) == 0) {
            return line.find("Strict") != std::string::npos;
        }
    }
    return false;
}

TEST(FormInspection, AgreesWithTheXmlOfEveryCorpusDocument) {
    int compared = 0;
    for (const auto& entry : fs::directory_iterator(fs::path(WORDBM_CORPUS_DIR) / "docx")) {
        const auto& path = entry.path();
        if (path.extension() != ".docx" && path.extension() != ".docm") {
            continue;
        }
        std::ostringstream out;
        std::ostringstream err;
        const int exit = FormInspection(out, err).run(path.string(), true);
        if (isStrict(path)) {
            EXPECT_EQ(exit, 2) << path;
            EXPECT_NE(err.str().find("Strict"), std::string::npos) << err.str();
            continue;
        }
        ASSERT_EQ(exit, 0) << path << ": " << err.str();
        auto expected = readXml(path);
        auto found = readJson(out.str());
        std::sort(expected.bookmarks.begin(), expected.bookmarks.end());
        std::sort(found.bookmarks.begin(), found.bookmarks.end());
        EXPECT_EQ(found.bookmarks, expected.bookmarks) << path;
        EXPECT_EQ(found.mergeFields, expected.mergeFields) << path;
        ++compared;
    }
    EXPECT_GE(compared, 55);
}

TEST(FormInspection, TextFormNamesStoriesAndMergeFields) {
    std::ostringstream out;
    std::ostringstream err;
    ASSERT_EQ(FormInspection(out, err).run(std::string(WORDBM_CORPUS_DIR) + "/docx/MERGEFIELD.docx", false),
              0);
    EXPECT_EQ(out.str().rfind("main\n", 0), 0u) << out.str();
    EXPECT_NE(out.str().find("-> Seriendruckfeld "), std::string::npos) << out.str();

    EXPECT_EQ(FormInspection(out, err).run("/nonexistent/form.docx", false), 2);
    EXPECT_NE(err.str().find("Datei nicht gefunden!"), std::string::npos);
}

} // namespace
} // namespace wordbm
