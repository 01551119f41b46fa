#pragma once

#include <string_view>

namespace wordbm::word {

// The length of a UTF-8 text in the units of Range offsets and of character moves: UTF-16 code
// units, as Word counts (a character outside the Basic Multilingual Plane counts two). Callers that
// move the selection over text they typed pass this, not the byte count.
inline long TextLength(std::string_view utf8) {
    long units = 0;
    for (const char c : utf8) {
        const auto byte = static_cast<unsigned char>(c);
        if ((byte & 0xC0) != 0x80) {
            units += byte >= 0xF0 ? 2 : 1;
        }
    }
    return units;
}

} // namespace wordbm::word
