#include "engine/ooxml/VmlStyle.h"

#include <array>
#include <charconv>
#include <cmath>

namespace wordbm::ooxml {

namespace {

std::string_view trimmed(std::string_view text) {
    while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) {
        text.remove_prefix(1);
    }
    while (!text.empty() && (text.back() == ' ' || text.back() == '\t')) {
        text.remove_suffix(1);
    }
    return text;
}

struct Unit {
    std::string_view name;
    double points;
};

constexpr std::array<Unit, 6> Units{{
    {"pt", 1.0},
    {"in", 72.0},
    {"cm", 72.0 / 2.54},
    {"mm", 72.0 / 25.4},
    {"pc", 12.0},
    {"px", 0.75},
}};

} // namespace

VmlStyle VmlStyle::parse(std::string_view text) {
    VmlStyle style;
    while (!text.empty()) {
        const auto end = text.find(';');
        const std::string_view entry = text.substr(0, end);
        const auto colon = entry.find(':');
        if (colon != std::string_view::npos) {
            style.set(trimmed(entry.substr(0, colon)), std::string(trimmed(entry.substr(colon + 1))));
        }
        text = end == std::string_view::npos ? std::string_view() : text.substr(end + 1);
    }
    return style;
}

VmlStyle& VmlStyle::set(std::string_view key, std::string value) {
    for (auto& [name, current] : entries_) {
        if (name == key) {
            current = std::move(value);
            return *this;
        }
    }
    entries_.emplace_back(std::string(key), std::move(value));
    return *this;
}

std::string VmlStyle::get(std::string_view key) const {
    for (const auto& [name, value] : entries_) {
        if (name == key) {
            return value;
        }
    }
    return {};
}

bool VmlStyle::has(std::string_view key) const {
    for (const auto& entry : entries_) {
        if (entry.first == key) {
            return true;
        }
    }
    return false;
}

std::string VmlStyle::str() const {
    std::string text;
    for (const auto& [name, value] : entries_) {
        if (!text.empty()) {
            text += ';';
        }
        text += name;
        text += ':';
        text += value;
    }
    return text;
}

std::optional<double> VmlStyle::points(std::string_view length) {
    length = trimmed(length);
    for (const Unit& unit : Units) {
        if (length.size() > unit.name.size() && length.ends_with(unit.name)) {
            const auto value = number(length.substr(0, length.size() - unit.name.size()));
            if (value) {
                return *value * unit.points;
            }
        }
    }
    return std::nullopt;
}

std::optional<double> VmlStyle::number(std::string_view text) {
    text = trimmed(text);
    if (!text.empty() && text.front() == '+') {
        text.remove_prefix(1);
    }
    double value = 0.0;
    const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || stop != text.data() + text.size() || text.empty()) {
        return std::nullopt;
    }
    return value;
}

std::string VmlStyle::formatPoints(double points) {
    return formatNumber(points, 3) + "pt";
}

std::string VmlStyle::formatNumber(double value, int decimals) {
    std::array<char, 64> buffer{};
    const double rounded = std::round(value * std::pow(10.0, decimals)) / std::pow(10.0, decimals);
    // Negative zero would print as "-0".
    const double shown = rounded == 0.0 ? 0.0 : rounded;
    const auto [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), shown,
                                            std::chars_format::fixed, decimals);
    std::string text(buffer.data(), error == std::errc() ? end : buffer.data());
    if (text.find('.') != std::string::npos) {
        while (text.back() == '0') {
            text.pop_back();
        }
        if (text.back() == '.') {
            text.pop_back();
        }
    }
    return text;
}

} // namespace wordbm::ooxml
