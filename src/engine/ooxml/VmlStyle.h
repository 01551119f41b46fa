#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace wordbm::ooxml {

// The CSS-like `style` attribute of a VML shape: read from legacy shapes, written for fallbacks.
// Keys keep their order, as Word writes them.
class VmlStyle {
public:
    VmlStyle() = default;
    static VmlStyle parse(std::string_view text);

    // Replaces the value of an existing key.
    VmlStyle& set(std::string_view key, std::string value);
    // Empty when the key is missing.
    std::string get(std::string_view key) const;
    bool has(std::string_view key) const;
    std::string str() const;

    // A length with its unit (pt, in, cm, mm, pc, px) in points; nullopt without a known unit.
    static std::optional<double> points(std::string_view length);
    // A unitless number, as group coordinates are written; nullopt when it is none.
    static std::optional<double> number(std::string_view text);

    // "12.75pt": at most three decimals, trailing zeros dropped; never in exponent form.
    static std::string formatPoints(double points);
    static std::string formatNumber(double value, int decimals);

private:
    std::vector<std::pair<std::string, std::string>> entries_;
};

} // namespace wordbm::ooxml
