#include "qrbill/SplitAddress.h"

#include <gtest/gtest.h>

namespace wordbm {
namespace {

AddressFields split(AddressLines lines) {
    return SplitAddressFields(lines);
}

TEST(SplitAddress, OrdinaryAddressesTakeNameStreetTownAndSwissDefault) {
    auto f = split({"Herr", "Hans Muster", "Musterweg 12", "8000 Zürich", ""});
    EXPECT_EQ(f.Name, "Hans Muster");
    EXPECT_EQ(f.Strasse, "Musterweg");
    EXPECT_EQ(f.HausNr, "12");
    EXPECT_EQ(f.PLZ, "8000");
    EXPECT_EQ(f.Ort, "Zürich");
    EXPECT_EQ(f.Land, "CH");

    // One line between name and street belongs to the name.
    f = split({"Firma", "Muster AG", "Abteilung X", "Bahnhofstrasse 1", "3000 Bern"});
    EXPECT_EQ(f.Name, "Muster AG Abteilung X");
    EXPECT_EQ(f.Strasse, "Bahnhofstrasse");
    EXPECT_EQ(f.Land, "CH");

    // Two lines between them are dropped; the street splits at its last blank.
    f = split({"Muster AG", "z.H. Frau Meier", "Buchhaltung", "Route de la Gare 5a", "1700 Fribourg"});
    EXPECT_EQ(f.Name, "Muster AG");
    EXPECT_EQ(f.Strasse, "Route de la Gare");
    EXPECT_EQ(f.HausNr, "5a");

    // Lines without blanks: street alone, town alone; blanks around lines are dropped.
    f = split({"  Anna Beispiel ", "Postfach", "Basel", "", ""});
    EXPECT_EQ(f.Name, "Anna Beispiel");
    EXPECT_EQ(f.Strasse, "Postfach");
    EXPECT_EQ(f.HausNr, "");
    EXPECT_EQ(f.PLZ, "");
    EXPECT_EQ(f.Ort, "Basel");
}

TEST(SplitAddress, KeepsItsKnownOddOutcomes) {
    // A country word at the bottom of an ordinary address is read as the town.
    auto f = split({"Hans Muster", "Musterweg 12", "8000 Zürich", "Schweiz", ""});
    EXPECT_EQ(f.Ort, "Schweiz");
    EXPECT_EQ(f.PLZ, "");
    EXPECT_EQ(f.Strasse, "8000");
    EXPECT_EQ(f.HausNr, "Zürich");
    EXPECT_EQ(f.Name, "Hans Muster Musterweg 12") << "the line above the street joins the name";
    EXPECT_EQ(f.Land, "CH");

    // A name in line 5: the country scan sees only the name, the default country applies.
    f = split({"", "", "", "", "Hans Muster"});
    EXPECT_EQ(f.Name, "Hans Muster");
    EXPECT_EQ(f.Land, "CH");
    EXPECT_EQ(f.Ort, "");

    // A name in line 4 followed by a country word: the country is taken, no town is read.
    f = split({"", "", "Herr", "Hans Muster", "Deutschland"});
    EXPECT_EQ(f.Land, "Deutschland");
    EXPECT_EQ(f.Ort, "");

    // A name in line 4 followed by the town line.
    f = split({"", "Frau", "", "Eva Muster", "8000 Zürich"});
    EXPECT_EQ(f.PLZ, "8000");
    EXPECT_EQ(f.Strasse, "");
    EXPECT_EQ(f.Land, "CH");

    // Salutations alone give no name and therefore no default country.
    f = split({"Herr und Frau", "", "", "", ""});
    EXPECT_EQ(f.Name, "");
    EXPECT_EQ(f.Land, "");
}

TEST(SplitAddress, JoinsQuotesLabelsAndBlocks) {
    const AddressLines empty{};
    EXPECT_EQ(SplitAddress(empty), "\r\n\r\n\r\n\r\n\r\n");
    EXPECT_EQ(SplitAddress(empty, true), "\r\n\r\n\r\n\r\n");

    const AddressLines hans{"Herr", "Hans Muster", "Musterweg 12", "8000 Zürich", ""};
    EXPECT_EQ(SplitAddress(hans), "Hans Muster\r\nMusterweg\r\n12\r\n8000\r\nZürich\r\nCH");
    EXPECT_EQ(SplitAddress(hans, true), "Hans Muster\r\nMusterweg 12\r\n8000 Zürich\r\nCH");

    std::string separator;
    EXPECT_EQ(SplitAddress({"A \"B\" C", "", "", "", ""}, separator, "\"", false, false, {}),
              "\"A \"\"B\"\" C\"\r\n\"\"\r\n\"\"\r\n\"\"\r\n\"\"\r\n\"CH\"");
    EXPECT_EQ(separator, "\r\n") << "an empty separator is handed back as CR LF";

    separator = ";";
    EXPECT_EQ(SplitAddress(empty, separator, {}, true, false, "Kli"),
              "Name:         KliName;Strasse:      KliStrasse;HausNr:   KliHausNr;PLZ: KliPLZ;"
              "Ort:          KliOrt;Land:         KliLand");

    EXPECT_EQ(AddressBlock({"Muster AG", "", " ", ""}), "Muster AG\r\n\r\n\r\n");
    EXPECT_EQ(AddressBlock({"a", "b", "c", "d"}), "a\r\nb\r\nc\r\nd");
}

} // namespace
} // namespace wordbm
