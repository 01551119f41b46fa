#include "CorpusFiles.h"

#include <algorithm>
#include <filesystem>

namespace wordbm::ooxml::test {

std::string corpusPath(const std::string& name) {
    return std::string(WORDBM_CORPUS_DIR) + "/docx/" + name;
}

std::vector<std::string> corpusDocuments() {
    std::vector<std::string> names;
    std::error_code error;
    for (const auto& entry :
         std::filesystem::directory_iterator(std::string(WORDBM_CORPUS_DIR) + "/docx", error)) {
        const auto extension = entry.path().extension().string();
        if (extension == ".docx" || extension == ".docm") {
            names.push_back(entry.path().filename().string());
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

} // namespace wordbm::ooxml::test
