#include "support/Cp1252.h"

#include <array>
#include <cstdint>

namespace wordbm {

namespace {

// Code points of bytes 0x80-0x9F. The five bytes Windows leaves undefined (0x81, 0x8D, 0x8F,
// 0x90, 0x9D) pass through as the C1 controls of the same number, as MultiByteToWideChar does.
constexpr std::array<char32_t, 32> HighControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

constexpr char32_t codePointOf(unsigned byte) {
    return (byte >= 0x80 && byte <= 0x9F) ? HighControls[byte - 0x80] : static_cast<char32_t>(byte);
}

struct Utf8Sequence {
    std::array<char, 3> bytes{};
    std::uint8_t length = 0;
};

constexpr Utf8Sequence encode(char32_t cp) {
    Utf8Sequence seq;
    if (cp < 0x80) {
        seq.bytes[0] = static_cast<char>(cp);
        seq.length = 1;
    } else if (cp < 0x800) {
        seq.bytes[0] = static_cast<char>(0xC0 | (cp >> 6));
        seq.bytes[1] = static_cast<char>(0x80 | (cp & 0x3F));
        seq.length = 2;
    } else {
        seq.bytes[0] = static_cast<char>(0xE0 | (cp >> 12));
        seq.bytes[1] = static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
        seq.bytes[2] = static_cast<char>(0x80 | (cp & 0x3F));
        seq.length = 3;
    }
    return seq;
}

constexpr std::array<Utf8Sequence, 256> makeToUtf8() {
    std::array<Utf8Sequence, 256> table{};
    for (unsigned b = 0; b < 256; ++b) {
        table[b] = encode(codePointOf(b));
    }
    return table;
}

constexpr std::array<Utf8Sequence, 256> ToUtf8 = makeToUtf8();

constexpr char Unmappable = '?';

// The byte for a code point, or '?' when cp1252 has none.
char byteFor(char32_t cp) {
    if (cp < 0x80 || (cp >= 0xA0 && cp <= 0xFF)) {
        return static_cast<char>(cp);
    }
    for (unsigned i = 0; i < HighControls.size(); ++i) {
        if (HighControls[i] == cp) {
            return static_cast<char>(0x80 + i);
        }
    }
    return Unmappable;
}

bool isContinuation(unsigned char c) {
    return (c & 0xC0) == 0x80;
}

// Decodes one well-formed sequence at text[pos]; returns its length, 0 when malformed
// (overlong forms, surrogates and values beyond U+10FFFF count as malformed).
std::size_t decode(std::string_view text, std::size_t pos, char32_t& cp) {
    const auto lead = static_cast<unsigned char>(text[pos]);
    std::size_t length = 0;
    char32_t min = 0;
    if (lead >= 0xC2 && lead <= 0xDF) {
        length = 2, cp = lead & 0x1Fu, min = 0x80;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
        length = 3, cp = lead & 0x0Fu, min = 0x800;
    } else if (lead >= 0xF0 && lead <= 0xF4) {
        length = 4, cp = lead & 0x07u, min = 0x10000;
    } else {
        return 0;
    }
    if (text.size() - pos < length) {
        return 0;
    }
    for (std::size_t i = 1; i < length; ++i) {
        const auto c = static_cast<unsigned char>(text[pos + i]);
        if (!isContinuation(c)) {
            return 0;
        }
        cp = (cp << 6) | (c & 0x3Fu);
    }
    if (cp < min || cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF)) {
        return 0;
    }
    return length;
}

} // namespace

std::string cp1252ToUtf8(std::string_view bytes) {
    std::string result;
    appendCp1252AsUtf8(result, bytes);
    return result;
}

void appendCp1252AsUtf8(std::string& text, std::string_view bytes) {
    // Two passes: the exact size first, so the text grows once.
    std::size_t size = 0;
    for (const char c : bytes) {
        size += ToUtf8[static_cast<unsigned char>(c)].length;
    }
    const auto start = text.size();
    text.resize(start + size);
    char* out = text.data() + start;
    for (const char c : bytes) {
        const auto& seq = ToUtf8[static_cast<unsigned char>(c)];
        out[0] = seq.bytes[0];
        if (seq.length > 1) {
            out[1] = seq.bytes[1];
            if (seq.length > 2) {
                out[2] = seq.bytes[2];
            }
        }
        out += seq.length;
    }
}

std::string utf8ToCp1252(std::string_view text) {
    // Never longer than the input: every sequence becomes one byte.
    std::string result(text.size(), '\0');
    char* out = result.data();
    std::size_t pos = 0;
    while (pos < text.size()) {
        const auto c = static_cast<unsigned char>(text[pos]);
        if (c < 0x80) {
            *out++ = static_cast<char>(c);
            ++pos;
            continue;
        }
        char32_t cp = 0;
        const std::size_t length = decode(text, pos, cp);
        *out++ = length == 0 ? Unmappable : byteFor(cp);
        pos += length == 0 ? 1 : length;
    }
    result.resize(static_cast<std::size_t>(out - result.data()));
    return result;
}

} // namespace wordbm
