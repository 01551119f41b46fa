#pragma once

#include <array>
#include <map>
#include <string>
#include <string_view>

namespace wordbm {

// The widths of the slip's font as the office worker sets it: Arial, or the font this system puts
// in its place (Liberation Sans, whose widths are Arial's). Read once from the font files that
// fontconfig names; without them every character counts as wide as the font size, so that a text
// measured too long is shortened rather than left to run out of its box.
class SlipFont {
public:
    // The one instance, loaded on first use; read-only afterwards, so threads may share it.
    static const SlipFont& Arial();

    // Width in points of UTF-8 `text` set in `size` points, without kerning.
    float Width(std::string_view text, float size, bool bold) const;
    // Height in points of one line in `size` points at single line spacing.
    float LineHeight(float size) const;
    // Whether the widths come from a font file.
    bool Measured() const { return measured_; }
    const std::string& File(bool bold) const { return bold ? boldFile_ : regularFile_; }

private:
    SlipFont();

    // Advances in ems, per code point; the few characters beyond the Latin table are kept apart.
    struct Advances {
        std::array<float, 0x250> latin{};
        std::map<char32_t, float> other;
        float widest = 1.0F;
        float of(char32_t c) const;
    };

    static bool load(const std::string& file, Advances& advances, float& lineHeight);

    Advances regular_;
    Advances bold_;
    float lineHeight_ = 1.15F; // in ems
    bool measured_ = false;
    std::string regularFile_;
    std::string boldFile_;
};

} // namespace wordbm
