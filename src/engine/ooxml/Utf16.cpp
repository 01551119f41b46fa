#include "engine/ooxml/Utf16.h"

namespace wordbm::ooxml::utf16 {

namespace {

bool isLead(char c) {
    return (static_cast<unsigned char>(c) & 0xC0) != 0x80;
}

} // namespace

long length(std::string_view utf8) {
    long units = 0;
    for (const char c : utf8) {
        if (isLead(c)) {
            units += unitsOfLead(static_cast<unsigned char>(c));
        }
    }
    return units;
}

std::size_t byteOffset(std::string_view utf8, long units, bool roundUp) {
    long counted = 0;
    for (std::size_t at = 0; at < utf8.size(); ++at) {
        if (!isLead(utf8[at])) {
            continue;
        }
        const int width = unitsOfLead(static_cast<unsigned char>(utf8[at]));
        if (counted == units || (counted + width > units && !roundUp)) {
            return at;
        }
        counted += width;
        if (counted > units) {
            std::size_t next = at + 1;
            while (next < utf8.size() && !isLead(utf8[next])) {
                ++next;
            }
            return next;
        }
    }
    return utf8.size();
}

long snap(std::string_view utf8, long units, bool roundUp) {
    return length(utf8.substr(0, byteOffset(utf8, units, roundUp)));
}

std::string fromCodePoint(char32_t cp) {
    std::string out;
    if (cp < 0x80) {
        out += static_cast<char>(cp);
    } else if (cp < 0x800) {
        out += static_cast<char>(0xC0 | (cp >> 6));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    } else if (cp < 0x10000) {
        out += static_cast<char>(0xE0 | (cp >> 12));
        out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    } else {
        out += static_cast<char>(0xF0 | (cp >> 18));
        out += static_cast<char>(0x80 | ((cp >> 12) & 0x3F));
        out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    }
    return out;
}

} // namespace wordbm::ooxml::utf16
