#pragma once

#include "data/ExportField.h"

#include <string>
#include <vector>

namespace wordbm {

// The fixed vocabulary of the suite's invoice export. The rows are reference data; the engine
// itself works only with the public names, through the built-in field list.
class ExportFieldCatalogue {
public:
    static constexpr const char* Header = "Nr;SqlName;PublicName;Typ;Description;Source;FieldLength";

    // The 55 rows in Nr order.
    static const std::vector<ExportField>& Rows();

    // Header line and one line per row, columns joined by ";", lines ended by CR LF like the
    // suite's other text files.
    static std::string Text();

    // The public names in Nr order, each followed by ";" (so the text ends with ";").
    static std::string FieldListText();
};

} // namespace wordbm
