#pragma once

#include <cstddef>
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
    // Positions in `lines` of the lines that belong to an invoice that failed, so the list can
    // mark them and a person sees them without reading every line.
    std::vector<std::size_t> failedLines;
};

} // namespace wordbm
