#include "data/FieldKey.h"

namespace wordbm {

FieldKey::FieldKey(const Variant& value) {
    if (const auto* text = value.get<std::string>()) {
        kind_ = Kind::Name;
        name_ = *text;
    } else if (const auto* shortNumber = value.get<std::int16_t>()) {
        kind_ = Kind::Number;
        number_ = *shortNumber;
    } else if (const auto* longNumber = value.get<std::int32_t>()) {
        kind_ = Kind::Number;
        number_ = *longNumber;
    }
}

} // namespace wordbm
