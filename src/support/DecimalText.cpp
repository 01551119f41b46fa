#include "support/DecimalText.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <system_error>

namespace wordbm {

namespace {

// Exponents beyond this are overflow or zero for every target type anyway; capping keeps
// the arithmetic on absurd inputs ("1E999999999999") from overflowing.
constexpr long ExponentCap = 100000;

// The right single quotation mark, which Swiss keyboards and word processors put for "'".
constexpr std::string_view CurlyApostrophe = "\xE2\x80\x99";

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

class Scanner {
public:
    explicit Scanner(std::string_view text) : text_(text) {}

    bool atEnd() const { return pos_ == text_.size(); }

    void skipBlanks() {
        while (!atEnd() && (text_[pos_] == ' ' || text_[pos_] == '\t')) {
            ++pos_;
        }
    }

    bool take(char c) {
        if (!atEnd() && text_[pos_] == c) {
            ++pos_;
            return true;
        }
        return false;
    }

    // '+' or '-'; 0 when none.
    char takeSign() {
        if (take('+')) {
            return '+';
        }
        return take('-') ? '-' : '\0';
    }

    bool takeDigit(std::string& into) {
        if (!atEnd() && isDigit(text_[pos_])) {
            into += text_[pos_++];
            return true;
        }
        return false;
    }

    bool takeThousandsMark() {
        if (take('\'')) {
            return true;
        }
        if (text_.substr(pos_).starts_with(CurlyApostrophe)) {
            pos_ += CurlyApostrophe.size();
            return true;
        }
        return false;
    }

    bool takeExponentMark() {
        // "D" is the classic double-precision exponent mark and is read like "E".
        return take('E') || take('e') || take('D') || take('d');
    }

    // Digits of an exponent, capped; nullopt when there is none.
    std::optional<long> takeExponentDigits() {
        std::string digits;
        long value = 0;
        while (takeDigit(digits)) {
            value = std::min(value * 10 + (digits.back() - '0'), ExponentCap);
        }
        return digits.empty() ? std::nullopt : std::optional<long>(value);
    }

private:
    std::string_view text_;
    std::size_t pos_ = 0;
};

} // namespace

std::optional<DecimalText> DecimalText::scan(std::string_view text) {
    Scanner in(text);
    DecimalText number;
    in.skipBlanks();
    const char leadingSign = in.takeSign();
    in.skipBlanks();
    // Thousands marks only count after a first digit and before the decimal point.
    while (in.takeDigit(number.digits_) || (!number.digits_.empty() && in.takeThousandsMark())) {
    }
    long fractionDigits = 0;
    if (in.take('.')) {
        while (in.takeDigit(number.digits_)) {
            ++fractionDigits;
        }
    }
    if (number.digits_.empty()) {
        return std::nullopt;
    }
    long exponent = 0;
    if (in.takeExponentMark()) {
        const char exponentSign = in.takeSign();
        const auto digits = in.takeExponentDigits();
        if (!digits) {
            return std::nullopt;
        }
        exponent = exponentSign == '-' ? -*digits : *digits;
    }
    in.skipBlanks();
    char trailingSign = '\0';
    if (leadingSign == '\0') {
        trailingSign = in.takeSign();
        in.skipBlanks();
    }
    if (!in.atEnd()) {
        return std::nullopt;
    }
    number.negative_ = leadingSign == '-' || trailingSign == '-';
    number.exponent_ = exponent - fractionDigits;
    number.normalise();
    return number;
}

void DecimalText::normalise() {
    const auto first = digits_.find_first_not_of('0');
    if (first == std::string::npos) {
        digits_.clear();
        exponent_ = 0;
        negative_ = false;
        return;
    }
    const auto last = digits_.find_last_not_of('0');
    exponent_ += static_cast<long>(digits_.size() - last - 1);
    digits_ = digits_.substr(first, last - first + 1);
}

std::optional<double> DecimalText::toDouble() const {
    if (digits_.empty()) {
        return 0.0;
    }
    // Position of the leading digit as a power of ten; decides overflow and underflow up front.
    const long magnitude = static_cast<long>(digits_.size()) + exponent_;
    if (magnitude > std::numeric_limits<double>::max_exponent10 + 1) {
        return std::nullopt;
    }
    if (magnitude < std::numeric_limits<double>::min_exponent10 - 20) {
        return 0.0;
    }
    std::string text = digits_;
    text += 'e';
    text += std::to_string(exponent_);
    double value = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    if (result.ec == std::errc::result_out_of_range) {
        if (magnitude > 0) {
            return std::nullopt;
        }
        value = 0;
    }
    return negative_ ? -value : value;
}

bool DecimalText::roundsUp(std::size_t kept) const {
    // Digits from `kept` on are dropped; trailing zeros are gone, so anything after the first
    // dropped digit is non-zero.
    if (kept >= digits_.size()) {
        return false;
    }
    const char first = digits_[kept];
    if (first != '5') {
        return first > '5';
    }
    if (kept + 1 < digits_.size()) {
        return true;
    }
    const bool keptIsOdd = kept > 0 && (digits_[kept - 1] - '0') % 2 == 1;
    return keptIsOdd;
}

std::optional<std::int64_t> DecimalText::toScaled(int decimals) const {
    if (digits_.empty()) {
        return 0;
    }
    const long shift = exponent_ + decimals;
    const long size = static_cast<long>(digits_.size());
    // A negative `kept` means even the first digit lies beyond the rounding place.
    const long kept = std::min(size, size + shift);
    if (kept + std::max(shift, 0L) > 20) {
        return std::nullopt;
    }
    std::uint64_t magnitude = 0;
    for (long i = 0; i < kept; ++i) {
        const auto digit = static_cast<std::uint64_t>(digits_[static_cast<std::size_t>(i)] - '0');
        if (__builtin_mul_overflow(magnitude, 10u, &magnitude) ||
            __builtin_add_overflow(magnitude, digit, &magnitude)) {
            return std::nullopt;
        }
    }
    for (long i = 0; i < shift; ++i) {
        if (__builtin_mul_overflow(magnitude, 10u, &magnitude)) {
            return std::nullopt;
        }
    }
    if (kept >= 0 && roundsUp(static_cast<std::size_t>(kept)) &&
        __builtin_add_overflow(magnitude, 1u, &magnitude)) {
        return std::nullopt;
    }
    constexpr auto Max = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
    if (magnitude > Max + (negative_ ? 1 : 0)) {
        return std::nullopt;
    }
    return negative_ ? static_cast<std::int64_t>(0 - magnitude) : static_cast<std::int64_t>(magnitude);
}

} // namespace wordbm
