#pragma once

#include "engine/ports/OptionsPort.h"

#include <map>
#include <string>

namespace wordbm {

// The options store as a map; counts how often a key was written.
class MemoryOptions : public OptionsPort {
public:
    std::string get(const std::string& key) override;
    void set(const std::string& key, const std::string& value) override;

    std::map<std::string, std::string> values;
    int writes = 0;
};

} // namespace wordbm
