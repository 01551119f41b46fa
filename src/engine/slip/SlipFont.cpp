#include "engine/slip/SlipFont.h"

#include <fontconfig/fontconfig.h>
#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_TRUETYPE_TABLES_H

#include <algorithm>
#include <memory>

namespace wordbm {

namespace {

// Characters an invoice's texts bring beyond the Latin table: quotes, dashes, the ellipsis, the
// euro sign.
constexpr char32_t OtherCharacters[] = {0x2013, 0x2014, 0x2018, 0x2019, 0x201A, 0x201C, 0x201D,
                                        0x201E, 0x2022, 0x2026, 0x2039, 0x203A, 0x20AC};

// The file fontconfig chooses for Arial: the font the office worker will set the slip in.
std::string fontFile(bool bold) {
    FcPattern* pattern = FcPatternCreate();
    if (!pattern) {
        return {};
    }
    FcPatternAddString(pattern, FC_FAMILY, reinterpret_cast<const FcChar8*>("Arial"));
    FcPatternAddInteger(pattern, FC_WEIGHT, bold ? FC_WEIGHT_BOLD : FC_WEIGHT_REGULAR);
    FcPatternAddInteger(pattern, FC_SLANT, FC_SLANT_ROMAN);
    FcConfigSubstitute(nullptr, pattern, FcMatchPattern);
    FcDefaultSubstitute(pattern);
    FcResult result = FcResultNoMatch;
    FcPattern* match = FcFontMatch(nullptr, pattern, &result);
    std::string file;
    FcChar8* path = nullptr;
    if (match && FcPatternGetString(match, FC_FILE, 0, &path) == FcResultMatch && path) {
        file = reinterpret_cast<const char*>(path);
    }
    if (match) {
        FcPatternDestroy(match);
    }
    FcPatternDestroy(pattern);
    return file;
}

// The next code point of UTF-8 `text` at `at`, moving `at` behind it; a broken sequence yields
// U+FFFD for its first byte.
char32_t nextCodePoint(std::string_view text, std::size_t& at) {
    const auto lead = static_cast<unsigned char>(text[at++]);
    const int more = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : lead >= 0xC0 ? 1 : 0;
    if (lead >= 0x80 && more == 0) {
        return 0xFFFD;
    }
    char32_t c = more == 0 ? lead : lead & (0x3F >> more);
    for (int i = 0; i < more; ++i) {
        if (at >= text.size() || (static_cast<unsigned char>(text[at]) & 0xC0) != 0x80) {
            return 0xFFFD;
        }
        c = (c << 6) | (static_cast<unsigned char>(text[at++]) & 0x3F);
    }
    return c;
}

} // namespace

const SlipFont& SlipFont::Arial() {
    static const SlipFont font;
    return font;
}

SlipFont::SlipFont() {
    regular_.latin.fill(1.0F);
    bold_.latin.fill(1.0F);
    if (!FcInit()) {
        return;
    }
    regularFile_ = fontFile(false);
    boldFile_ = fontFile(true);
    float boldLineHeight = 0.0F;
    measured_ = !regularFile_.empty() && !boldFile_.empty() && load(regularFile_, regular_, lineHeight_) &&
                load(boldFile_, bold_, boldLineHeight);
    if (!measured_) {
        regular_ = bold_ = Advances{};
        regular_.latin.fill(1.0F);
        bold_.latin.fill(1.0F);
        lineHeight_ = 1.15F;
        return;
    }
    lineHeight_ = std::max(lineHeight_, boldLineHeight);
}

bool SlipFont::load(const std::string& file, Advances& advances, float& lineHeight) {
    FT_Library library = nullptr;
    if (FT_Init_FreeType(&library) != 0) {
        return false;
    }
    const std::unique_ptr<FT_LibraryRec_, decltype(&FT_Done_FreeType)> libraryOwner(library,
                                                                                    FT_Done_FreeType);
    FT_Face face = nullptr;
    if (FT_New_Face(library, file.c_str(), 0, &face) != 0) {
        return false;
    }
    const std::unique_ptr<FT_FaceRec_, decltype(&FT_Done_Face)> faceOwner(face, FT_Done_Face);
    if (face->units_per_EM == 0) {
        return false;
    }
    const auto em = static_cast<float>(face->units_per_EM);
    // A character the font lacks is set in another font; counting it as the widest is safe.
    float widest = 0.0F;
    const auto advanceOf = [&](char32_t c) -> float {
        const FT_UInt glyph = FT_Get_Char_Index(face, c);
        if (glyph == 0 || FT_Load_Glyph(face, glyph, FT_LOAD_NO_SCALE) != 0) {
            return -1.0F;
        }
        return static_cast<float>(face->glyph->advance.x) / em;
    };
    std::array<float, 0x250> latin{};
    for (char32_t c = 0; c < latin.size(); ++c) {
        latin[c] = advanceOf(c);
        widest = std::max(widest, latin[c]);
    }
    std::map<char32_t, float> other;
    for (const char32_t c : OtherCharacters) {
        other[c] = advanceOf(c);
        widest = std::max(widest, other[c]);
    }
    if (widest <= 0.0F) {
        return false;
    }
    for (float& advance : latin) {
        advance = advance < 0.0F ? widest : advance;
    }
    for (auto& [c, advance] : other) {
        advance = advance < 0.0F ? widest : advance;
    }
    advances.latin = latin;
    advances.other = std::move(other);
    advances.widest = widest;
    // The office worker gives a line the font's ascent and descent as Windows reads them.
    const auto* os2 = static_cast<const TT_OS2*>(FT_Get_Sfnt_Table(face, FT_SFNT_OS2));
    lineHeight = os2 ? static_cast<float>(os2->usWinAscent + os2->usWinDescent) / em
                     : static_cast<float>(face->height) / em;
    return true;
}

float SlipFont::Advances::of(char32_t c) const {
    if (c < latin.size()) {
        return latin[c];
    }
    const auto found = other.find(c);
    return found == other.end() ? widest : found->second;
}

float SlipFont::Width(std::string_view text, float size, bool bold) const {
    const Advances& advances = bold ? bold_ : regular_;
    float ems = 0.0F;
    for (std::size_t at = 0; at < text.size();) {
        ems += advances.of(nextCodePoint(text, at));
    }
    return ems * size;
}

float SlipFont::LineHeight(float size) const {
    return lineHeight_ * size;
}

} // namespace wordbm
