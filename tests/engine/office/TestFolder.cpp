#include "TestFolder.h"

#include <algorithm>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <unistd.h>

namespace fs = std::filesystem;

TestFolder::TestFolder() {
    std::string pattern = (fs::temp_directory_path() / "wordbm-office-test-XXXXXX").string();
    if (::mkdtemp(pattern.data()) == nullptr) {
        throw std::runtime_error("cannot create a temporary folder");
    }
    path_ = pattern;
}

TestFolder::~TestFolder() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

std::vector<std::string> TestFolder::entries() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(path_)) {
        names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

std::string TestFolder::copyCorpusDocument(const std::string& corpusName, const std::string& newName) const {
    const fs::path target = path_ / newName;
    fs::copy_file(fs::path(WORDBM_CORPUS_DIR) / "docx" / corpusName, target,
                  fs::copy_options::overwrite_existing);
    // Corpus files are read-only; a copy the test may change must not be.
    fs::permissions(target, fs::perms::owner_write, fs::perm_options::add);
    return target.string();
}

std::string TestFolder::write(const std::string& name, const std::string& bytes) const {
    const std::string path = (path_ / name).string();
    std::ofstream(path, std::ios::binary) << bytes;
    return path;
}

std::string readBytes(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream bytes;
    bytes << in.rdbuf();
    return bytes.str();
}
