#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace wordbm {

// Writes a zip archive from entries whose data is compressed already: the merge run puts every
// invoice together from pieces of the prepared form that were compressed once. Sizes stay below
// the 4 GiB of a zip without its 64-bit extension, which the form's own limits ensure.
class ZipAssembler {
public:
    struct Entry {
        std::string_view name;
        std::uint16_t method = 8; // 0 stored, 8 deflated
        std::uint32_t crc = 0;
        std::uint64_t size = 0; // uncompressed
        std::uint16_t dosTime = 0;
        std::uint16_t dosDate = 0;
    };

    // `expected` is the archive's size, if known, so the bytes are allocated once.
    explicit ZipAssembler(std::size_t expected = 0);

    // Adds an entry whose compressed data follows in one or more append() calls.
    void begin(const Entry& entry);
    void append(std::string_view compressed);
    // The archive with its central directory; the assembler is empty afterwards.
    std::string finish();

private:
    void endEntry();

    std::string archive_;
    std::string directory_;
    std::size_t headerAt_ = 0;
    std::size_t dataAt_ = 0;
    std::uint16_t entries_ = 0;
    bool open_ = false;
};

} // namespace wordbm
