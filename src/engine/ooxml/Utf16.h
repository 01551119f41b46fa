#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// Offsets in a story count UTF-16 code units, as Word's do; text is held as UTF-8. These helpers
// translate between the two without building a UTF-16 copy.
namespace wordbm::ooxml::utf16 {

// Units of one UTF-8 sequence that starts with `lead`: 2 for a four-byte sequence, else 1.
inline int unitsOfLead(unsigned char lead) {
    return lead >= 0xF0 ? 2 : 1;
}

long length(std::string_view utf8);

// Byte offset of the character that starts at (or, inside a surrogate pair, holds) `units`;
// `roundUp` moves a position inside a pair behind the pair instead of before it.
std::size_t byteOffset(std::string_view utf8, long units, bool roundUp = false);

// The unit offset of the character boundary at or before/after `units` (a pair is not split).
long snap(std::string_view utf8, long units, bool roundUp);

std::string fromCodePoint(char32_t codePoint);

} // namespace wordbm::ooxml::utf16
