#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace wordbm::ooxml::test {

// A zip archive written byte by byte, for archives no zip tool would make: repeated or unsafe
// names, sizes that lie, a gigabyte of zeros in a few megabytes.
class HandmadeZip {
public:
    void addStored(std::string name, std::string_view data);
    // `size` zero bytes as a deflate stream built directly (about 160:1), never held inflated.
    // The directory declares `declaredSize` (default: the true size). Above 64 MiB the checksum
    // is left 0: such an entry must be refused long before it is checked.
    void addZeros(std::string name, std::uint32_t size, std::uint32_t declaredSize = 0);
    std::string bytes() const;

    // The smallest Word document: content types, package relationships, main document.
    static HandmadeZip
    wordDocument(std::string_view documentXml,
                 std::string_view mainType =
                     "application/vnd.openxmlformats-officedocument.wordprocessingml.document.main+xml");

private:
    struct Entry {
        std::string name;
        std::string stored;
        std::uint16_t method;
        std::uint32_t crc;
        std::uint32_t size;
    };
    std::vector<Entry> entries_;
};

} // namespace wordbm::ooxml::test
