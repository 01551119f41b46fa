#pragma once

#include <string>

namespace wordbm {

// Where the file-name mask lives between runs (the option "MergerTemplate"). The options store
// sits above this layer, so the engine adapts it to this port.
class MaskStore {
public:
    virtual ~MaskStore() = default;

    // The stored mask; "" when none is stored.
    virtual std::string load() = 0;
    virtual void save(const std::string& mask) = 0;
};

} // namespace wordbm
