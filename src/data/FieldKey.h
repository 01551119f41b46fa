#pragma once

#include "support/Variant.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace wordbm {

// How a caller names a column of the control file: by header name or by number. Built implicitly
// from a Variant (text names, 16/32-bit integers number, any other type names nothing), from text
// or from an int, so one accessor signature serves all three. Holds a view: use it within the call.
class FieldKey {
public:
    enum class Kind { Name, Number, Invalid };

    FieldKey(const Variant& value);
    FieldKey(std::string_view name) : kind_(Kind::Name), name_(name) {}
    FieldKey(const char* name) : kind_(Kind::Name), name_(name) {}
    FieldKey(const std::string& name) : kind_(Kind::Name), name_(name) {}
    FieldKey(int number) : kind_(Kind::Number), number_(number) {}
    // A Boolean is no column number; without this it would quietly become 0 or 1.
    FieldKey(bool) = delete;

    Kind kind() const { return kind_; }
    std::string_view name() const { return name_; }
    std::int32_t number() const { return number_; }

private:
    Kind kind_ = Kind::Invalid;
    std::string_view name_;
    std::int32_t number_ = 0;
};

} // namespace wordbm
