#include "engine/slip/SlipFit.h"

#include "engine/slip/SlipFont.h"

namespace wordbm {

namespace {

// The word processor rounds positions to its own units; a line measured this close to the edge
// may already wrap there.
constexpr float Slack = 0.5F; // points

bool continuation(char c) {
    return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

// Where each character of UTF-8 `text` ends.
std::vector<std::size_t> characterEnds(std::string_view text) {
    std::vector<std::size_t> ends;
    for (std::size_t at = 1; at <= text.size(); ++at) {
        if (at == text.size() || !continuation(text[at])) {
            ends.push_back(at);
        }
    }
    return ends;
}

std::string withoutTrailing(std::string text) {
    // A cut behind a blank or a separator would leave it dangling before the ellipsis.
    while (!text.empty() && std::string_view(" ,;:-/").find(text.back()) != std::string_view::npos) {
        text.pop_back();
    }
    return text;
}

} // namespace

int SlipFit::Rows(const Line& line) const {
    const float width = width_ - Slack;
    const std::string_view text = line.text;
    const float blank = font_.Width(" ", line.size, line.bold);
    int rows = 1;
    float x = 0.0F;
    std::size_t at = 0;
    while (at < text.size()) {
        std::size_t blanks = 0;
        while (at < text.size() && text[at] == ' ') {
            ++blanks, ++at;
        }
        const std::size_t end = std::min(text.find(' ', at), text.size());
        const std::string_view word = text.substr(at, end - at);
        at = end;
        if (word.empty()) {
            break; // blanks at the end hang in the margin
        }
        const float wordWidth = font_.Width(word, line.size, line.bold);
        const float gap = x > 0.0F ? static_cast<float>(blanks) * blank : 0.0F;
        if (x > 0.0F && x + gap + wordWidth > width) {
            ++rows, x = 0.0F;
        } else {
            x += gap;
        }
        if (wordWidth <= width) {
            x += wordWidth;
            continue;
        }
        // A word wider than the box is broken between its characters.
        std::size_t from = 0;
        for (const std::size_t characterEnd : characterEnds(word)) {
            const float character = font_.Width(word.substr(from, characterEnd - from), line.size, line.bold);
            from = characterEnd;
            if (x > 0.0F && x + character > width) {
                ++rows, x = 0.0F;
            }
            x += character;
        }
    }
    return rows;
}

float SlipFit::Height(const std::vector<Line>& lines) const {
    std::size_t shown = lines.size();
    while (shown > 0 && lines[shown - 1].text.empty()) {
        --shown;
    }
    float height = 0.0F;
    for (std::size_t i = 0; i < shown; ++i) {
        height += static_cast<float>(Rows(lines[i])) * font_.LineHeight(lines[i].size);
    }
    return height;
}

bool SlipFit::Fits(const std::vector<Line>& lines) const {
    return Height(lines) <= height_ - Slack;
}

std::vector<SlipFit::Line> SlipFit::Fitted(std::vector<Line> lines) const {
    const std::vector<Line> original = lines;
    while (!Fits(lines)) {
        const int give = nextToGive(lines);
        if (give < 0) {
            break;
        }
        const auto index = static_cast<std::size_t>(give);
        lines[index].text = Shortened(original[index], Rows(lines[index]) - 1);
    }
    return lines;
}

int SlipFit::nextToGive(const std::vector<Line>& lines) const {
    for (const Give kind : {Give::Message, Give::Address}) {
        int chosen = -1;
        int most = 1;
        for (std::size_t i = 0; i < lines.size(); ++i) {
            if (lines[i].give != kind) {
                continue;
            }
            const int rows = Rows(lines[i]);
            if (rows > most || (rows == most && chosen >= 0)) {
                chosen = static_cast<int>(i);
                most = rows;
            }
        }
        if (chosen >= 0) {
            return chosen;
        }
    }
    return -1;
}

std::string SlipFit::Shortened(const Line& line, int rows) const {
    if (Rows(line) <= rows) {
        return line.text;
    }
    const std::vector<std::size_t> ends = characterEnds(line.text);
    Line cut = line;
    for (auto end = ends.rbegin(); end != ends.rend(); ++end) {
        cut.text = withoutTrailing(line.text.substr(0, *end)) + std::string(Ellipsis);
        if (Rows(cut) <= rows) {
            return cut.text;
        }
    }
    return std::string(Ellipsis);
}

} // namespace wordbm
