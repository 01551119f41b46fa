#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace wordbm {

// What the result list dialog shows after a merge or a file-name test.
struct ResultList {
    std::vector<std::string> lines;
    std::int32_t total = 0;
    std::int32_t ok = 0;
    std::int32_t errors = 0;
    bool testOnly = false;
};

} // namespace wordbm
