#pragma once

#include <string>

namespace wordbm::office {

// The file URL of a path as LibreOffice takes it: made absolute, every byte outside the
// unreserved characters and "/" percent-encoded (so blanks, "#", "%" and umlauts survive).
std::string fileUrl(const std::string& path);

} // namespace wordbm::office
