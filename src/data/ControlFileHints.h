#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace wordbm {

// Signs that a control file was saved by another program than the billing program: lines ending
// in LF alone, a UTF-8 byte-order mark, UTF-8 characters. The file is read as it stands all the
// same (cp1252, lines end in CR LF); the hints only tell the user why it reads as it does.
class ControlFileHints {
public:
    // German hint lines for the file's raw bytes; none when they look as the billing program
    // writes them.
    static std::vector<std::string> of(std::string_view bytes);
    // The same for a file on disk; none when it cannot be read.
    static std::vector<std::string> ofFile(const std::string& path);

    // The line that says a control file holds no invoice.
    static const std::string NoInvoices;
};

} // namespace wordbm
