#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace wordbm {

// A number read from text without binary rounding: sign, significant digits and a power of ten.
// Both the floating conversions and the exact currency conversion start from it.
class DecimalText {
public:
    // The permissive numeric syntax of the regional settings; nullopt when the text is not a number.
    static std::optional<DecimalText> scan(std::string_view text);

    // nullopt when the value lies beyond the range of double.
    std::optional<double> toDouble() const;

    // The value times 10^decimals as a whole number, the rest rounded half to even;
    // nullopt when it does not fit 64 bits.
    std::optional<std::int64_t> toScaled(int decimals) const;

    bool negative() const { return negative_; }
    const std::string& digits() const { return digits_; }
    long exponent() const { return exponent_; }

private:
    void normalise();
    bool roundsUp(std::size_t kept) const;

    bool negative_ = false;
    std::string digits_; // no leading or trailing zeros; empty for zero
    long exponent_ = 0;  // value = digits_ * 10^exponent_
};

} // namespace wordbm
