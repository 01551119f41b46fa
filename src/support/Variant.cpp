#include "support/Variant.h"

#include "support/Regional.h"

#include <type_traits>

namespace wordbm {

namespace {

template <typename T> constexpr bool AlwaysFalse = false;

// One overload set so that std::visit picks the text for every stored type.
struct TextOf {
    std::string operator()(std::monostate) const { return {}; }
    std::string operator()(Variant::NullTag) const { return {}; }
    std::string operator()(std::int16_t n) const { return std::to_string(n); }
    std::string operator()(std::int32_t n) const { return std::to_string(n); }
    std::string operator()(std::uint8_t n) const { return std::to_string(n); }
    std::string operator()(float n) const { return regional::formatSingle(n); }
    std::string operator()(double n) const { return regional::formatNumber(n); }
    std::string operator()(Currency amount) const { return regional::formatCurrency(amount); }
    std::string operator()(Date date) const { return regional::formatDate(date); }
    std::string operator()(const std::string& text) const { return text; }
    std::string operator()(bool flag) const { return flag ? "True" : "False"; }
    std::string operator()(Decimal number) const { return regional::formatDecimal(number.value); }
};

} // namespace

VarType Variant::type() const {
    return std::visit(
        [](const auto& value) {
            using T = std::decay_t<decltype(value)>;
            if constexpr (std::is_same_v<T, std::monostate>) {
                return VarType::Empty;
            } else if constexpr (std::is_same_v<T, NullTag>) {
                return VarType::Null;
            } else if constexpr (std::is_same_v<T, std::int16_t>) {
                return VarType::Integer;
            } else if constexpr (std::is_same_v<T, std::int32_t>) {
                return VarType::Long;
            } else if constexpr (std::is_same_v<T, float>) {
                return VarType::Single;
            } else if constexpr (std::is_same_v<T, double>) {
                return VarType::Double;
            } else if constexpr (std::is_same_v<T, Currency>) {
                return VarType::Currency;
            } else if constexpr (std::is_same_v<T, Date>) {
                return VarType::Date;
            } else if constexpr (std::is_same_v<T, std::string>) {
                return VarType::String;
            } else if constexpr (std::is_same_v<T, bool>) {
                return VarType::Boolean;
            } else if constexpr (std::is_same_v<T, Decimal>) {
                return VarType::Decimal;
            } else if constexpr (std::is_same_v<T, std::uint8_t>) {
                return VarType::Byte;
            } else {
                static_assert(AlwaysFalse<T>, "every stored type needs its VarType");
            }
        },
        value_);
}

bool Variant::isNumber() const {
    switch (type()) {
    case VarType::Integer:
    case VarType::Long:
    case VarType::Single:
    case VarType::Double:
    case VarType::Currency:
    case VarType::Decimal:
    case VarType::Byte:
        return true;
    default:
        return false;
    }
}

std::string Variant::toText() const {
    return std::visit(TextOf{}, value_);
}

} // namespace wordbm
