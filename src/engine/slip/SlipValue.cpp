#include "engine/slip/SlipValue.h"

#include "support/Strings.h"

#include <algorithm>

namespace wordbm {

std::string SlipValue::Written(std::string_view value, int breaks) {
    if (Blank(value)) {
        return {};
    }
    std::string text = replaceAll(value, "\r\n", std::string(1, LineBreak));
    const auto first = text.find_first_not_of(LineBreak);
    if (first == std::string::npos) {
        text.clear();
    } else {
        text = text.substr(first, text.find_last_not_of(LineBreak) - first + 1);
    }
    text.append(static_cast<std::size_t>(std::max(breaks, 1)), LineBreak);
    return text;
}

bool SlipValue::EmptyWithoutLineEnds(std::string_view value) {
    return replaceAll(value, "\r\n", "").empty();
}

bool SlipValue::Blank(std::string_view value) {
    return trim(value).empty();
}

} // namespace wordbm
