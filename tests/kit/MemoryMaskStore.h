#pragma once

#include "names/MaskStore.h"

#include <string>

namespace wordbm {

// The remembered file-name mask, kept in memory.
class MemoryMaskStore : public MaskStore {
public:
    std::string load() override { return stored; }
    void save(const std::string& mask) override { stored = mask; }

    std::string stored;
};

} // namespace wordbm
