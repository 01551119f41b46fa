#include "data/ExportFieldCatalogue.h"

#include "support/Strings.h"

#include <gtest/gtest.h>
#include <set>

using namespace wordbm;

TEST(ExportFieldCatalogue, TextReadsBackAsFiftyFiveConsistentRows) {
    const std::vector<std::string> lines = split(ExportFieldCatalogue::Text(), "\r\n");
    ASSERT_EQ(lines.size(), 57u); // the last line break leaves an empty piece
    EXPECT_EQ(lines[0], "Nr;SqlName;PublicName;Typ;Description;Source;FieldLength");
    const std::set<std::string> typs{"0", "1", "2"}, lengths{"20", "30", "100", "200"};
    std::set<std::string> keys;
    std::string listText;
    for (std::size_t nr = 1; nr <= 55; ++nr) {
        const std::vector<std::string> cols = split(lines[nr], ";");
        ASSERT_EQ(cols.size(), 7u) << lines[nr];
        EXPECT_EQ(cols[0], std::to_string(nr));
        EXPECT_TRUE(typs.contains(cols[3]) && lengths.contains(cols[6])) << lines[nr];
        EXPECT_TRUE(keys.insert(toLowerAscii(cols[2])).second) << "public name twice: " << lines[nr];
        listText += cols[2] + ";";
    }
    EXPECT_EQ(ExportFieldCatalogue::FieldListText(), listText);
    EXPECT_TRUE(listText.starts_with("BueroAdr1;BueroAdr2;") && listText.ends_with("Referenz;RgDue;"));
    // The suite's own spellings and quirks stay as they are.
    EXPECT_EQ(lines[27], "27;ProjectTypeNameFull;GeschArt;0;Art des Geschäfts;Geschäft / Greschäftsart;20");
    EXPECT_EQ(lines[32], "32;KlientAdr1;KliAdr1;0;Adresszeile des KlientAdren 1;Klient;20");
    EXPECT_EQ(lines[41], "41;Amount;KliTot;1;Klient Total;Rechnung;20");
    EXPECT_EQ(lines[45], "45;Amount;KliTot2;1;Klient Total inkl. MWST;Rechnung;20");
    EXPECT_EQ(lines[55], "55;PaymentDue;RgDue;1;Fälligkeitsdatum;Rechnung;20");
}
