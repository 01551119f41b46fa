#pragma once

#include <string>
#include <vector>

namespace wordbm::ooxml::test {

std::string corpusPath(const std::string& name);
// Every .docx and .docm of the shared corpus, by file name.
std::vector<std::string> corpusDocuments();
// Saved in Strict Open XML, which the package refuses with its own message.
bool isStrict(const std::string& name);

} // namespace wordbm::ooxml::test
