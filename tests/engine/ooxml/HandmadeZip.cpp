#include "ooxml/HandmadeZip.h"

#include <array>

namespace wordbm::ooxml::test {

namespace {

void put(std::string& out, std::uint32_t value, int bytes) {
    for (int i = 0; i < bytes; ++i) {
        out += static_cast<char>((value >> (8 * i)) & 0xFF);
    }
}

std::uint32_t crcOf(std::string_view data) {
    static const auto table = [] {
        std::array<std::uint32_t, 256> entries{};
        for (std::uint32_t n = 0; n < 256; ++n) {
            entries[n] = n;
            for (int bit = 0; bit < 8; ++bit) {
                entries[n] = (entries[n] & 1) ? 0xEDB88320u ^ (entries[n] >> 1) : entries[n] >> 1;
            }
        }
        return entries;
    }();
    std::uint32_t crc = 0xFFFFFFFFu;
    for (const unsigned char byte : data) {
        crc = table[(crc ^ byte) & 0xFF] ^ (crc >> 8);
    }
    return ~crc;
}

// A non-final fixed-Huffman deflate block of `size` zeros: literal zeros, then copies of 258
// bytes from one byte back, closed by an empty stored block so that blocks can be repeated.
std::string zeroBlock(std::uint32_t size) {
    std::string out;
    int used = 0;
    const auto bit = [&](std::uint32_t value) {
        if (used == 0) {
            out += '\0';
        }
        out.back() = static_cast<char>(static_cast<unsigned char>(out.back()) | (value << used));
        used = (used + 1) % 8;
    };
    const auto code = [&](std::uint32_t value, int count) { // Huffman codes go highest bit first
        for (int i = count - 1; i >= 0; --i) {
            bit((value >> i) & 1);
        }
    };
    const auto copies = (size - 1) / 258;
    code(0b010, 3); // not final, fixed codes (the type's two bits read lowest first)
    for (std::uint32_t i = 0; i < size - copies * 258; ++i) {
        code(0x30, 8); // literal 0
    }
    for (std::uint32_t i = 0; i < copies; ++i) {
        code(0xC5, 8); // length 258
        code(0, 5);    // distance 1
    }
    code(0, 7 + 3); // end of block, then the stored block's header
    while (used != 0) {
        bit(0);
    }
    return out + std::string("\x00\x00\xFF\xFF", 4);
}

} // namespace

void HandmadeZip::addStored(std::string name, std::string_view data) {
    entries_.push_back(
        {std::move(name), std::string(data), 0, crcOf(data), static_cast<std::uint32_t>(data.size())});
}

void HandmadeZip::addZeros(std::string name, std::uint32_t size, std::uint32_t declaredSize) {
    constexpr std::uint32_t BlockSize = 1 << 20;
    const auto block = zeroBlock(BlockSize);
    std::string stored;
    std::uint32_t done = 0;
    for (; size - done >= BlockSize; done += BlockSize) {
        stored += block;
    }
    if (size > done) {
        stored += zeroBlock(size - done);
    }
    stored += std::string("\x03\x00", 2); // final empty block
    const auto crc = size <= (64u << 20) ? crcOf(std::string(size, '\0')) : 0;
    entries_.push_back({std::move(name), std::move(stored), 8, crc, declaredSize ? declaredSize : size});
}

std::string HandmadeZip::bytes() const {
    std::string out;
    std::string directory;
    for (const auto& entry : entries_) {
        const auto common = [&entry](std::string& to) {
            put(to, 20, 2); // version needed
            put(to, 0, 2);  // flags
            put(to, entry.method, 2);
            put(to, 0x00210000, 4); // 1 January 1980
            put(to, entry.crc, 4);
            put(to, static_cast<std::uint32_t>(entry.stored.size()), 4);
            put(to, entry.size, 4);
            put(to, static_cast<std::uint32_t>(entry.name.size()), 2);
            put(to, 0, 2); // extra field
        };
        put(directory, 0x02014b50, 4);
        put(directory, 20, 2); // made by
        common(directory);
        put(directory, 0, 4); // comment length, disk
        put(directory, 0, 2); // internal attributes
        put(directory, 0, 4); // external attributes
        put(directory, static_cast<std::uint32_t>(out.size()), 4);
        directory += entry.name;

        put(out, 0x04034b50, 4);
        common(out);
        out += entry.name + entry.stored;
    }
    const auto directoryOffset = static_cast<std::uint32_t>(out.size());
    put(out, 0x06054b50, 4);
    put(out, 0, 4); // disks
    put(out, static_cast<std::uint32_t>(entries_.size() * 0x10001), 4);
    put(out, static_cast<std::uint32_t>(directory.size()), 4);
    put(out, directoryOffset, 4);
    put(out, 0, 2); // comment
    return out.insert(directoryOffset, directory);
}

HandmadeZip HandmadeZip::wordDocument(std::string_view documentXml, std::string_view mainType) {
    HandmadeZip zip;
    zip.addStored(
        "[Content_Types].xml",
        R"(<Types xmlns="http://schemas.openxmlformats.org/package/2006/content-types">)"
        R"(<Default Extension="rels" ContentType="application/vnd.openxmlformats-package.relationships+xml"/>)"
        R"(<Default Extension="xml" ContentType="application/xml"/>)"
        R"(<Override PartName="/word/document.xml" ContentType=")" +
            std::string(mainType) + R"("/></Types>)");
    zip.addStored(
        "_rels/.rels",
        R"(<Relationships xmlns="http://schemas.openxmlformats.org/package/2006/relationships">)"
        R"(<Relationship Id="rId1" Target="word/document.xml" Type="http://schemas.openxmlformats.org/)"
        R"(officeDocument/2006/relationships/officeDocument"/></Relationships>)");
    zip.addStored("word/document.xml", documentXml);
    return zip;
}

} // namespace wordbm::ooxml::test
