#include "data/MergeFieldName.h"

#include <gtest/gtest.h>
#include <utility>
#include <vector>

using namespace wordbm;

// Codes as Word and other writers store them in real documents.
TEST(MergeFieldName, TakesTheNameBeforeTheSwitches) {
    // clang-format off
    const std::vector<std::pair<std::string, std::string>> cases{
        {" MERGEFIELD  kundenname  \\* MERGEFORMAT ", "kundenname"},
        {" MERGEFIELD  yourdate \\@ \"dddd, MMMM dd, yyyy\" ", "yourdate"},
        {" MERGEFIELD Fornavn ", "Fornavn"}, {"MERGEFIELD second ", "second"},
        {" MERGEFIELD TableStart:", "TableStart:"}, {" MERGEFIELD \"KliTot2\" \\m ", "KliTot2"},
        {" MERGEFIELD =person.first_name \\* MERGEFORMAT ", "=person.first_name"},
        // The cut comes before the unquoting: a quoted name with blanks keeps its first word.
        {" MERGEFIELD \"Hello world\" \\* MERGEFORMAT ", "Hello"}, {" MERGEFIELD \"\" ", ""}};
    // clang-format on
    for (const auto& [code, name] : cases) {
        EXPECT_EQ(MergeFieldName(code), std::optional<std::string>(name)) << code;
    }
    for (const char* code : {"MERGEFIELD", " MERGEFIELD  ", " mergefield KliName ", "MERGEFIELDKliName",
                             " SAVEDATE  \\@ \"yyyy\"  \\* MERGEFORMAT ", " \\* MERGEFORMAT ", ""}) {
        EXPECT_EQ(MergeFieldName(code), std::nullopt) << code;
    }
}
