#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace wordbm {

// One invoice for the merge run to make: its data line and where it goes.
struct MergeJob {
    std::int32_t row = 0;
    // The path as the file-name mask gave it (separators kept) and as it is used on disk.
    std::string docName;
    std::string path;
    // Counts the run's invoices from 0, in row order; printing follows it.
    std::size_t sequence = 0;
};

} // namespace wordbm
