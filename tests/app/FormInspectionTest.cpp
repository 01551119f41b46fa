#include "app/FormInspection.h"

#include "CorpusXml.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <gtest/gtest.h>
#include <regex>
#include <sstream>
#include <vector>

namespace wordbm {
namespace {

namespace fs = std::filesystem;

struct XmlReading {
    std::vector<std::string> bookmarks;
    int mergeFields = 0;
};

XmlReading readXml(const fs::path& path) {
    XmlReading reading;
    const testing::CorpusXml xml(path);
    for (const auto& part : xml.partNames()) {
        const auto root = xml.root(part);
        const auto names = testing::bookmarksIn(root);
        reading.bookmarks.insert(reading.bookmarks.end(), names.begin(), names.end());
        for (const auto& field : testing::fieldsIn(root, false)) {
            reading.mergeFields += testing::isMergeCode(field.code);
        }
    }
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
        ASSERT_EQ(exit, 0) << path << ": " << err.str();
        auto expected = readXml(path);
        auto found = readJson(out.str());
        std::sort(expected.bookmarks.begin(), expected.bookmarks.end());
        std::sort(found.bookmarks.begin(), found.bookmarks.end());
        EXPECT_EQ(found.bookmarks, expected.bookmarks) << path;
        EXPECT_EQ(found.mergeFields, expected.mergeFields) << path;
        ++compared;
    }
    EXPECT_GE(compared, 58);
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

// A damaged form whose text and bookmark name hold bytes that are no UTF-8 still gives JSON.
TEST(FormInspection, JsonOfADamagedFormIsValidUtf8) {
    std::ostringstream out;
    std::ostringstream err;
    ASSERT_EQ(FormInspection(out, err).run(std::string(WORDBM_TEST_SOURCE_DIR) + "/forms/Kaputtes-UTF-8.docx",
                                           true),
              0)
        << err.str();
    const std::string json = out.str();
    const auto python =
        std::string("python3 -c 'import json, sys; json.loads(sys.stdin.buffer.read().decode(\"utf-8\"))'");
    FILE* check = ::popen(python.c_str(), "w");
    ASSERT_NE(check, nullptr);
    std::fwrite(json.data(), 1, json.size(), check);
    EXPECT_EQ(::pclose(check), 0) << json;
    EXPECT_NE(json.find("Gr\\ufffdn\\ufffd"), std::string::npos) << json;
    EXPECT_EQ(json.find('\xff'), std::string::npos);
}

} // namespace
} // namespace wordbm
