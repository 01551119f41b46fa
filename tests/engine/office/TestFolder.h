#pragma once

#include <filesystem>
#include <string>
#include <vector>

// A fresh folder for one test, removed with everything in it.
class TestFolder {
public:
    TestFolder();
    ~TestFolder();
    TestFolder(const TestFolder&) = delete;
    TestFolder& operator=(const TestFolder&) = delete;

    const std::filesystem::path& path() const { return path_; }
    std::string operator/(const std::string& name) const { return (path_ / name).string(); }

    // Names of the entries, sorted.
    std::vector<std::string> entries() const;
    // Copies a document of the shared corpus (corpus/docx) into this folder under newName.
    std::string copyCorpusDocument(const std::string& corpusName, const std::string& newName) const;
    std::string write(const std::string& name, const std::string& bytes) const;

private:
    std::filesystem::path path_;
};

std::string readBytes(const std::string& path);
