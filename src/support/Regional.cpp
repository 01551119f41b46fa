#include "support/Regional.h"

#include "support/DecimalText.h"
#include "support/Errors.h"
#include "support/Strings.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>

namespace wordbm::regional {

namespace {

constexpr double FifteenDigits = 15;

// Shortest text of `value` with at most `maxDigits` significant digits that reads back to the
// same value of type T; tries from `minDigits` up. "E" as exponent mark, as the classic CStr writes.
template <typename T> std::string shortestText(T value, int minDigits, int maxDigits) {
    if (std::isnan(value)) {
        return "NaN";
    }
    if (std::isinf(value)) {
        return value < 0 ? "-Infinity" : "Infinity";
    }
    if (value == 0) {
        return "0"; // also for -0, which the classic conversions never show
    }
    std::array<char, 64> buffer{};
    std::string text;
    for (int digits = minDigits; digits <= maxDigits; ++digits) {
        const auto written = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                           std::chars_format::general, digits);
        text.assign(buffer.data(), written.ptr);
        T back{};
        std::from_chars(text.data(), text.data() + text.size(), back);
        if (back == value) {
            break;
        }
    }
    for (char& c : text) {
        if (c == 'e') {
            c = 'E';
        }
    }
    return text;
}

std::int64_t checkedCurrency(double scaled) {
    // 2^63 is exactly representable; the valid range is [-2^63, 2^63).
    constexpr double Limit = 9223372036854775808.0;
    if (!(scaled >= -Limit && scaled < Limit)) {
        throw OverflowError();
    }
    return static_cast<std::int64_t>(scaled);
}

template <typename T> T checkedWhole(double value) {
    const double rounded = roundHalfEven(value);
    if (!(rounded >= static_cast<double>(std::numeric_limits<T>::min()) &&
          rounded <= static_cast<double>(std::numeric_limits<T>::max()))) {
        throw OverflowError();
    }
    return static_cast<T>(rounded);
}

} // namespace

bool isNumeric(std::string_view text) {
    return parseNumber(text).has_value();
}

std::optional<double> parseNumber(std::string_view text) {
    const auto decimal = DecimalText::scan(text);
    if (!decimal) {
        return std::nullopt;
    }
    return decimal->toDouble();
}

double roundHalfEven(double value) {
    if (!std::isfinite(value)) {
        return value;
    }
    const double below = std::floor(value);
    const double fraction = value - below; // exact for every finite double
    if (fraction < 0.5) {
        return below;
    }
    if (fraction > 0.5) {
        return below + 1;
    }
    return std::fmod(below, 2.0) == 0 ? below : below + 1;
}

std::int32_t toLong(double value) {
    return checkedWhole<std::int32_t>(value);
}
std::int16_t toInteger(double value) {
    return checkedWhole<std::int16_t>(value);
}
std::uint8_t toByte(double value) {
    return checkedWhole<std::uint8_t>(value);
}

std::optional<Currency> parseCurrency(std::string_view text) {
    const auto decimal = DecimalText::scan(text);
    if (!decimal) {
        return std::nullopt;
    }
    const auto scaled = decimal->toScaled(4);
    if (!scaled) {
        throw OverflowError();
    }
    return Currency{*scaled};
}

Currency toCurrency(double value) {
    return Currency{checkedCurrency(roundHalfEven(value * static_cast<double>(Currency::Scale)))};
}

std::string formatNumber(double value) {
    return shortestText(value, static_cast<int>(FifteenDigits), std::numeric_limits<double>::max_digits10);
}

std::string formatSingle(float value) {
    return shortestText(value, std::numeric_limits<float>::digits10 + 1,
                        std::numeric_limits<float>::max_digits10);
}

std::string formatDecimal(long double value) {
    return shortestText(value, static_cast<int>(FifteenDigits),
                        std::numeric_limits<long double>::max_digits10);
}

std::string formatCurrency(Currency amount) {
    const bool negative = amount.scaled < 0;
    // Unsigned arithmetic so that the most negative amount has a magnitude too.
    const auto magnitude =
        negative ? 0 - static_cast<std::uint64_t>(amount.scaled) : static_cast<std::uint64_t>(amount.scaled);
    const auto scale = static_cast<std::uint64_t>(Currency::Scale);
    std::string text = negative ? "-" : "";
    text += std::to_string(magnitude / scale);
    std::string fraction = zeroPad(static_cast<long long>(magnitude % scale), 4);
    while (!fraction.empty() && fraction.back() == '0') {
        fraction.pop_back();
    }
    if (!fraction.empty()) {
        text += '.';
        text += fraction;
    }
    return text;
}

std::optional<bool> parseBoolean(std::string_view text) {
    const std::string word = toLowerAscii(trim(text));
    if (word == "true" || word == "wahr") {
        return true;
    }
    if (word == "false" || word == "falsch") {
        return false;
    }
    const auto number = parseNumber(text);
    if (!number) {
        return std::nullopt;
    }
    return *number != 0;
}

} // namespace wordbm::regional
