#pragma once

#include <string>
#include <vector>

namespace wordbm::ooxml::test {

std::string corpusPath(const std::string& name);
// Every .docx and .docm of the shared corpus, by file name.
std::vector<std::string> corpusDocuments();

} // namespace wordbm::ooxml::test
