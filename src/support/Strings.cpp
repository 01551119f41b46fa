#include "support/Strings.h"

#include <algorithm>

namespace wordbm {

std::string trimLeft(std::string_view text) {
    const auto first = text.find_first_not_of(' ');
    return first == std::string_view::npos ? std::string() : std::string(text.substr(first));
}

std::string trimRight(std::string_view text) {
    const auto last = text.find_last_not_of(' ');
    return last == std::string_view::npos ? std::string() : std::string(text.substr(0, last + 1));
}

std::string trim(std::string_view text) {
    const auto first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) {
        return {};
    }
    const auto last = text.find_last_not_of(' ');
    return std::string(text.substr(first, last - first + 1));
}

std::string Unquote(std::string_view text, std::string_view delim) {
    std::string result = trim(text);
    if (delim.empty()) {
        return result;
    }
    std::string_view rest = result;
    if (rest.starts_with(delim)) {
        rest.remove_prefix(delim.size());
    }
    // A lone delimiter is consumed by the leading test; the trailing one is checked on what is left.
    if (rest.ends_with(delim)) {
        rest.remove_suffix(delim.size());
    }
    std::string doubled(delim);
    doubled += delim;
    return replaceAll(rest, doubled, delim);
}

std::string Quote(std::string_view text, std::string_view delim) {
    if (delim.empty()) {
        return std::string(text);
    }
    std::string doubled(delim);
    doubled += delim;
    std::string result(delim);
    result += replaceAll(text, delim, doubled);
    result += delim;
    return result;
}

std::vector<std::string> split(std::string_view text, std::string_view separator) {
    std::vector<std::string> pieces;
    if (separator.empty()) {
        pieces.emplace_back(text);
        return pieces;
    }
    std::size_t start = 0;
    for (auto hit = text.find(separator); hit != std::string_view::npos; hit = text.find(separator, start)) {
        pieces.emplace_back(text.substr(start, hit - start));
        start = hit + separator.size();
    }
    pieces.emplace_back(text.substr(start));
    return pieces;
}

std::string join(const std::vector<std::string>& pieces, std::string_view separator) {
    std::string result;
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        if (i > 0) {
            result += separator;
        }
        result += pieces[i];
    }
    return result;
}

std::string replaceAll(std::string_view text, std::string_view from, std::string_view to) {
    if (from.empty()) {
        return std::string(text);
    }
    std::string result;
    result.reserve(text.size());
    std::size_t start = 0;
    for (auto hit = text.find(from); hit != std::string_view::npos; hit = text.find(from, start)) {
        result.append(text.substr(start, hit - start));
        result.append(to);
        start = hit + from.size();
    }
    result.append(text.substr(start));
    return result;
}

namespace {
char lowerAscii(char c) {
    return (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c;
}
} // namespace

std::string toLowerAscii(std::string_view text) {
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(), lowerAscii);
    return result;
}

bool equalsIgnoreCase(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return lowerAscii(x) == lowerAscii(y); });
}

std::string zeroPad(long long number, int width) {
    std::string digits = std::to_string(number);
    const auto wanted = static_cast<std::size_t>(std::max(width, 0));
    if (digits.size() < wanted) {
        digits.insert(0, wanted - digits.size(), '0');
    } else if (digits.size() > wanted) {
        digits.erase(0, digits.size() - wanted);
    }
    return digits;
}

std::size_t utf8SequenceLength(std::string_view bytes, std::size_t at) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(bytes[at + i]); };
    const unsigned char lead = byte(0);
    const std::size_t length = lead >= 0xC2 && lead <= 0xDF   ? 2
                               : lead >= 0xE0 && lead <= 0xEF ? 3
                               : lead >= 0xF0 && lead <= 0xF4 ? 4
                                                              : 0;
    if (length == 0 || at + length > bytes.size()) {
        return 0;
    }
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(i) & 0xC0) != 0x80) {
            return 0;
        }
    }
    const bool overlong = (lead == 0xE0 && byte(1) < 0xA0) || (lead == 0xF0 && byte(1) < 0x90);
    const bool beyond = (lead == 0xED && byte(1) >= 0xA0) || (lead == 0xF4 && byte(1) >= 0x90);
    return overlong || beyond ? 0 : length;
}

void appendXmlText(std::string& out, std::string_view text) {
    for (const char c : text) {
        switch (c) {
        case '&':
            out += "&amp;";
            break;
        case '<':
            out += "&lt;";
            break;
        case '>':
            out += "&gt;";
            break;
        default:
            out += c;
        }
    }
}

} // namespace wordbm
