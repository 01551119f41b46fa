#pragma once

#include <string>

namespace wordbm::ooxml::test {

// Writes the smallest .docx whose body holds `bodyXml` into `folder` and returns its path.
std::string handmadeDocument(const std::string& folder, const std::string& bodyXml,
                             const std::string& fileName = "form.docx");

} // namespace wordbm::ooxml::test
