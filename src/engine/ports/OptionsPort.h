#pragma once

#include <string>

namespace wordbm {

// The engine's view of the per-user options ("Options", "DOCOpen", "MergerTemplate"). The options
// store lives above the engine, so the program entry hands in an adapter.
class OptionsPort {
public:
    virtual ~OptionsPort() = default;

    // The stored text; "" when nothing is stored.
    virtual std::string get(const std::string& key) = 0;
    virtual void set(const std::string& key, const std::string& value) = 0;
};

} // namespace wordbm
