#pragma once

#include <string>

namespace wordbm {

// The kind of value a column holds; the numbers are the ones the catalogue text carries.
enum class ExportFieldTyp : int { Text = 0, Number = 1, Date = 2 };

// One column of the billing run's invoice export, as the catalogue describes it.
struct ExportField {
    int Nr = 0;
    std::string SqlName;
    std::string PublicName; // the CSV column name, used in bookmarks and merge fields
    ExportFieldTyp Typ = ExportFieldTyp::Text;
    std::string Description;
    std::string Source;
    int FieldLength = 0;
};

} // namespace wordbm
