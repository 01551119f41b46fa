#pragma once

#include <cstddef>
#include <cstdint>

namespace wordbm::ooxml {

// Bounds that a form must stay within to be opened at all, so that a hostile package (zip bomb,
// millions of entries) is refused before it can exhaust memory.
struct PackageLimits {
    std::size_t maxEntries = 5000;
    std::uint64_t maxEntrySize = 64ull << 20;  // uncompressed bytes of one part
    std::uint64_t maxTotalSize = 512ull << 20; // all parts
    double maxCompressionRatio = 200.0;        // uncompressed/compressed of one entry
    // Entries up to this size may compress arbitrarily well: they cannot hurt, and an empty or
    // repetitive little part legitimately has a huge ratio.
    std::uint64_t ratioExemptSize = 1ull << 20;
};

} // namespace wordbm::ooxml
