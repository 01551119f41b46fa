#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace wordbm {

// The name a field code gives when the field is a merge field, not yet checked against the known
// fields (KnownFields::FieldKnown does that). The trimmed code must begin with exactly
// "MERGEFIELD " (letter case counts); the rest, trimmed, is cut at its first blank, where the
// switches begin, and unquoted. nullopt when the code is no merge field.
std::optional<std::string> MergeFieldName(std::string_view code);

} // namespace wordbm
