#pragma once

#include <cstdint>
#include <string>

namespace wordbm::ooxml {

// One entry of an archive as read: its name as written, its uncompressed bytes, and where and
// how it was stored, so that saving can copy it or store its new bytes the same way.
struct ZipEntry {
    std::string name;
    std::string bytes;
    std::uint64_t index = 0;
    std::int32_t method = 0; // 0 stored, 8 deflated
};

} // namespace wordbm::ooxml
