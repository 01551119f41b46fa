#include "data/MergeFieldName.h"

#include "support/Strings.h"

namespace wordbm {

std::optional<std::string> MergeFieldName(std::string_view code) {
    constexpr std::string_view keyword = "MERGEFIELD ";
    const std::string trimmed = trim(code);
    if (!trimmed.starts_with(keyword)) {
        return std::nullopt;
    }
    const std::string rest = trim(std::string_view(trimmed).substr(keyword.size()));
    // Cutting before unquoting splits a quoted name that holds blanks; export-field names have none.
    return Unquote(std::string_view(rest).substr(0, rest.find(' ')));
}

} // namespace wordbm
