#include "engine/ooxml/DrawingColour.h"

#include "engine/ooxml/DrawingXml.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <string_view>
#include <utility>

namespace wordbm::ooxml {

namespace {

using Named = std::pair<std::string_view, std::string_view>;

constexpr std::array<Named, 7> PresetColours{{
    {"black", "000000"},
    {"white", "FFFFFF"},
    {"red", "FF0000"},
    {"green", "008000"},
    {"blue", "0000FF"},
    {"yellow", "FFFF00"},
    {"gray", "808080"},
}};

// Word's default theme ("Office", 2013 and later).
constexpr std::array<Named, 16> ThemeColours{{
    {"dk1", "000000"},
    {"tx1", "000000"},
    {"lt1", "FFFFFF"},
    {"bg1", "FFFFFF"},
    {"dk2", "44546A"},
    {"tx2", "44546A"},
    {"lt2", "E7E6E6"},
    {"bg2", "E7E6E6"},
    {"accent1", "4472C4"},
    {"accent2", "ED7D31"},
    {"accent3", "A5A5A5"},
    {"accent4", "FFC000"},
    {"accent5", "5B9BD5"},
    {"accent6", "70AD47"},
    {"hlink", "0563C1"},
    {"folHlink", "954F72"},
}};

// DrawingML percentages count in thousandths of a percent.
constexpr double Whole = 100000.0;

struct Rgb {
    double red = 0.0;
    double green = 0.0;
    double blue = 0.0;
};

std::string_view lookUp(std::string_view key, const auto& table) {
    for (const auto& [name, value] : table) {
        if (name == key) {
            return value;
        }
    }
    return {};
}

std::optional<Rgb> parseHex(std::string_view hex) {
    unsigned value = 0;
    const auto [end, error] = std::from_chars(hex.data(), hex.data() + hex.size(), value, 16);
    if (hex.size() != 6 || error != std::errc() || end != hex.data() + hex.size()) {
        return std::nullopt;
    }
    return Rgb{static_cast<double>((value >> 16U) & 0xFFU), static_cast<double>((value >> 8U) & 0xFFU),
               static_cast<double>(value & 0xFFU)};
}

std::optional<Rgb> base(pugi::xml_node colour) {
    const std::string_view kind = drawingXml::localName(colour);
    if (kind == "srgbClr") {
        return parseHex(colour.attribute("val").value());
    }
    if (kind == "sysClr") {
        return parseHex(colour.attribute("lastClr").value());
    }
    if (kind == "prstClr") {
        return parseHex(lookUp(colour.attribute("val").value(), PresetColours));
    }
    if (kind == "schemeClr") {
        return parseHex(lookUp(colour.attribute("val").value(), ThemeColours));
    }
    return std::nullopt;
}

// Luminance changes work on hue, saturation and lightness.
Rgb withLightness(const Rgb& colour, double factor, double offset) {
    const double red = colour.red / 255.0;
    const double green = colour.green / 255.0;
    const double blue = colour.blue / 255.0;
    const double high = std::max({red, green, blue});
    const double low = std::min({red, green, blue});
    const double lightness = std::clamp((high + low) / 2.0 * factor + offset, 0.0, 1.0);
    if (high == low) {
        return {lightness * 255.0, lightness * 255.0, lightness * 255.0};
    }
    const double oldLightness = (high + low) / 2.0;
    const double saturation =
        oldLightness > 0.5 ? (high - low) / (2.0 - high - low) : (high - low) / (high + low);
    const double upper =
        lightness < 0.5 ? lightness * (1.0 + saturation) : lightness + saturation - lightness * saturation;
    const double lower = 2.0 * lightness - upper;
    // Each channel keeps its place between the smallest and the largest.
    const auto channel = [&](double value) {
        return (lower + (value - low) / (high - low) * (upper - lower)) * 255.0;
    };
    return {channel(red), channel(green), channel(blue)};
}

Rgb modified(Rgb colour, pugi::xml_node modifiers) {
    double factor = 1.0;
    double offset = 0.0;
    for (const pugi::xml_node modifier : modifiers.children()) {
        const std::string_view kind = drawingXml::localName(modifier);
        const double value = static_cast<double>(drawingXml::integer(modifier, "val")) / Whole;
        if (kind == "shade") {
            colour = {colour.red * value, colour.green * value, colour.blue * value};
        } else if (kind == "tint") {
            colour = {255.0 - (255.0 - colour.red) * value, 255.0 - (255.0 - colour.green) * value,
                      255.0 - (255.0 - colour.blue) * value};
        } else if (kind == "lumMod") {
            factor = value;
        } else if (kind == "lumOff") {
            offset = value;
        }
    }
    return factor == 1.0 && offset == 0.0 ? colour : withLightness(colour, factor, offset);
}

std::string hex(const Rgb& colour) {
    static constexpr std::string_view Digits = "0123456789ABCDEF";
    std::string text = "#";
    for (const double channel : {colour.red, colour.green, colour.blue}) {
        const auto value = static_cast<unsigned>(std::clamp(std::lround(channel), 0L, 255L));
        text += Digits[value >> 4U];
        text += Digits[value & 0xFU];
    }
    return text;
}

} // namespace

std::optional<std::string> DrawingColour::of(pugi::xml_node holder) {
    for (const pugi::xml_node colour : holder.children()) {
        if (colour.type() != pugi::node_element) {
            continue;
        }
        const auto rgb = base(colour);
        return rgb ? std::optional<std::string>(hex(modified(*rgb, colour))) : std::nullopt;
    }
    return std::nullopt;
}

} // namespace wordbm::ooxml
