#include "engine/merge/ZipAssembler.h"

#include <algorithm>

namespace wordbm {

namespace {

constexpr std::uint32_t LocalHeader = 0x04034b50;
constexpr std::uint32_t CentralHeader = 0x02014b50;
constexpr std::uint32_t EndOfDirectory = 0x06054b50;
constexpr std::uint16_t Version = 20;      // deflate, no 64-bit fields
constexpr std::uint16_t Utf8Name = 0x0800; // general purpose flag bit 11
constexpr std::size_t LocalHeaderSize = 30;

void put16(std::string& out, std::uint16_t value) {
    out += static_cast<char>(value & 0xff);
    out += static_cast<char>(value >> 8);
}

void put32(std::string& out, std::uint32_t value) {
    put16(out, static_cast<std::uint16_t>(value & 0xffff));
    put16(out, static_cast<std::uint16_t>(value >> 16));
}

void patch32(std::string& out, std::size_t at, std::uint32_t value) {
    for (int i = 0; i < 4; ++i) {
        out[at + i] = static_cast<char>((value >> (8 * i)) & 0xff);
    }
}

bool plainAscii(std::string_view name) {
    return std::all_of(name.begin(), name.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

} // namespace

ZipAssembler::ZipAssembler(std::size_t expected) {
    archive_.reserve(expected);
}

void ZipAssembler::begin(const Entry& entry) {
    endEntry();
    const std::uint16_t flags = plainAscii(entry.name) ? 0 : Utf8Name;
    const auto nameLength = static_cast<std::uint16_t>(entry.name.size());
    const auto size = static_cast<std::uint32_t>(entry.size);
    headerAt_ = archive_.size();
    put32(archive_, LocalHeader);
    put16(archive_, Version);
    put16(archive_, flags);
    put16(archive_, entry.method);
    put16(archive_, entry.dosTime);
    put16(archive_, entry.dosDate);
    put32(archive_, entry.crc);
    put32(archive_, 0); // compressed size, known once the data is in
    put32(archive_, size);
    put16(archive_, nameLength);
    put16(archive_, 0);
    archive_ += entry.name;
    dataAt_ = archive_.size();

    put32(directory_, CentralHeader);
    put16(directory_, Version);
    put16(directory_, Version);
    put16(directory_, flags);
    put16(directory_, entry.method);
    put16(directory_, entry.dosTime);
    put16(directory_, entry.dosDate);
    put32(directory_, entry.crc);
    put32(directory_, 0); // compressed size, patched with the local one
    put32(directory_, size);
    put16(directory_, nameLength);
    put16(directory_, 0); // extra field
    put16(directory_, 0); // comment
    put16(directory_, 0); // disk
    put16(directory_, 0); // internal attributes
    put32(directory_, 0); // external attributes
    put32(directory_, static_cast<std::uint32_t>(headerAt_));
    directory_ += entry.name;
    ++entries_;
    open_ = true;
}

void ZipAssembler::append(std::string_view compressed) {
    archive_ += compressed;
}

void ZipAssembler::endEntry() {
    if (!open_) {
        return;
    }
    const auto compressed = static_cast<std::uint32_t>(archive_.size() - dataAt_);
    patch32(archive_, headerAt_ + 18, compressed);
    const std::size_t nameLength = dataAt_ - headerAt_ - LocalHeaderSize;
    // The central record of this entry is the last one: 46 bytes and the name.
    patch32(directory_, directory_.size() - nameLength - 46 + 20, compressed);
    open_ = false;
}

std::string ZipAssembler::finish() {
    endEntry();
    const auto directoryAt = static_cast<std::uint32_t>(archive_.size());
    archive_ += directory_;
    put32(archive_, EndOfDirectory);
    put16(archive_, 0);
    put16(archive_, 0);
    put16(archive_, entries_);
    put16(archive_, entries_);
    put32(archive_, static_cast<std::uint32_t>(directory_.size()));
    put32(archive_, directoryAt);
    put16(archive_, 0);
    directory_.clear();
    entries_ = 0;
    return std::move(archive_);
}

} // namespace wordbm
