#pragma once

#include <string>
#include <system_error>

namespace wordbm {

// The system's description of a failure, for the end of a German message. The common file-system
// failures have German texts of our own (Swiss spelling, the same on every machine); any other
// comes from the C library in German when a German locale is installed, else as the library
// gives it.
class SystemErrorText {
public:
    // An errno value, as strerror would describe it.
    static std::string of(int code);
    // An error code of the system or generic category by its errno value; any other category
    // (zip, a library's own) by its own message.
    static std::string of(const std::error_code& error);
};

} // namespace wordbm
