#pragma once

#include "support/Currency.h"
#include "support/Date.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

namespace wordbm {

// Codes follow the classic VarType numbering so stored settings stay readable.
enum class VarType : int {
    Empty = 0,
    Null = 1,
    Integer = 2,
    Long = 3,
    Single = 4,
    Double = 5,
    Currency = 6,
    Date = 7,
    String = 8,
    Boolean = 11,
    Decimal = 14,
    Byte = 17,
};

// Decimal numbers are rare in the settings; a long double holds them well enough.
struct Decimal {
    long double value = 0;
    bool operator==(const Decimal&) const = default;
};

// A dynamically typed value: what the data classes hand out where "no value" (Empty),
// "null" (Null) and text must stay distinguishable.
class Variant {
public:
    struct NullTag {
        bool operator==(const NullTag&) const = default;
    };
    using Storage = std::variant<std::monostate, NullTag, std::int16_t, std::int32_t, float, double, Currency,
                                 Date, std::string, bool, Decimal, std::uint8_t>;

    Variant() = default;
    Variant(std::string text) : value_(std::move(text)) {}
    Variant(std::string_view text) : value_(std::string(text)) {}
    Variant(const char* text) : value_(std::string(text)) {}
    Variant(bool flag) : value_(flag) {}
    Variant(std::int16_t number) : value_(number) {}
    Variant(std::int32_t number) : value_(number) {}
    Variant(std::uint8_t number) : value_(number) {}
    Variant(float number) : value_(number) {}
    Variant(double number) : value_(number) {}
    Variant(Currency amount) : value_(amount) {}
    Variant(Date date) : value_(date) {}
    Variant(Decimal number) : value_(number) {}

    static Variant null() {
        Variant v;
        v.value_ = NullTag{};
        return v;
    }

    VarType type() const;
    bool isEmpty() const { return std::holds_alternative<std::monostate>(value_); }
    bool isNull() const { return std::holds_alternative<NullTag>(value_); }
    bool isString() const { return std::holds_alternative<std::string>(value_); }
    // True for the integer, floating, currency, decimal and byte types (not Boolean, not text).
    bool isNumber() const;

    template <typename T> const T* get() const { return std::get_if<T>(&value_); }
    const Storage& storage() const { return value_; }

    // Text as concatenation with "" gives it: Empty and Null give "", numbers use ".",
    // Booleans "True"/"False", dates "dd.mm.yyyy" with " hh:mm:ss" when there is a time.
    std::string toText() const;

    bool operator==(const Variant&) const = default;

private:
    Storage value_;
};

} // namespace wordbm
