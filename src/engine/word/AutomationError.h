#pragma once

#include <stdexcept>
#include <string>

namespace wordbm {

// An automation call that cannot do its work (the document is gone, damaged or refused).
// The description is German and can be shown to a user as it stands.
class AutomationError : public std::runtime_error {
public:
    explicit AutomationError(const std::string& description) : std::runtime_error(description) {}
    std::string Description() const { return what(); }
};

} // namespace wordbm
