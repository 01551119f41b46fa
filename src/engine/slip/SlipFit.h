#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace wordbm {

class SlipFont;

// Fits the lines of one slip box into the box. The box shows its lines one below the other, each
// wrapped at blanks as the word processor wraps them; when they need more height than the box
// has, the lines that may give up their end lose it to "…", as the QR-bill's style guide allows
// (the QR code carries every value in full): the message first, down to one row, then the address
// lines, the one taking most rows first and of equal ones the lowest.
class SlipFit {
public:
    static constexpr std::string_view Ellipsis = "\xE2\x80\xA6"; // …

    enum class Give { Nothing, Message, Address };

    struct Line {
        std::string text;
        float size = 0.0F; // points
        bool bold = false;
        Give give = Give::Nothing;
    };

    // `width` and `height`: the inside of the box, in points.
    SlipFit(const SlipFont& font, float width, float height) : font_(font), width_(width), height_(height) {}

    // The rows a line takes; an empty line takes one.
    int Rows(const Line& line) const;
    // The height the lines take, the empty lines at their end aside (they show nothing).
    float Height(const std::vector<Line>& lines) const;
    bool Fits(const std::vector<Line>& lines) const;
    // The lines, those that may give shortened until all fit or none can give more.
    std::vector<Line> Fitted(std::vector<Line> lines) const;
    // `line`'s text cut behind a character and ended with "…" so that it takes at most `rows`;
    // the text itself when it does already.
    std::string Shortened(const Line& line, int rows) const;

private:
    // The line that gives the next row, or -1.
    int nextToGive(const std::vector<Line>& lines) const;

    const SlipFont& font_;
    float width_;
    float height_;
};

} // namespace wordbm
