#include "data/ControlFileHints.h"

#include "kit/FileBytes.h"
#include "support/Cp1252.h"
#include "support/Strings.h"

#include <algorithm>
#include <gtest/gtest.h>

using namespace wordbm;

namespace {

// The sample billing run as the billing program writes it: cp1252, CR LF.
std::string sampleRun() {
    const std::string bytes =
        readBytes(std::string(WORDBM_TEST_SOURCE_DIR) + "/../../examples/Rechnungslauf.csv");
    EXPECT_FALSE(bytes.empty());
    return bytes;
}

// The same run after a clerk fixed a row in a spreadsheet and saved it as UTF-8 with LF.
std::string savedBySpreadsheet(const std::string& bytes, bool bom) {
    return (bom ? "\xEF\xBB\xBF" : "") + replaceAll(cp1252ToUtf8(bytes), "\r\n", "\n");
}

} // namespace

TEST(ControlFileHints, TheBillingProgramsOwnFileGetsNone) {
    EXPECT_TRUE(ControlFileHints::of(sampleRun()).empty());
    EXPECT_TRUE(ControlFileHints::of("").empty());
}

TEST(ControlFileHints, NameWhatASpreadsheetChangedAsFound) {
    const std::string sample = sampleRun();
    const auto umlauts = std::count_if(sample.begin(), sample.end(), [](char c) { return c & 0x80; });

    const auto hints = ControlFileHints::of(savedBySpreadsheet(sample, true));

    ASSERT_EQ(hints.size(), 3u);
    EXPECT_EQ(hints[0], "Hinweis: Die Zeilen der Steuerdatei enden nur mit LF (Linux-Zeilenende). Das "
                        "Fakturaprogramm schreibt Windows-Zeilenenden (CR LF); ohne sie wird die ganze Datei "
                        "als eine einzige Zeile gelesen.");
    EXPECT_NE(hints[1].find("beginnt mit einer UTF-8-Kennung (BOM)"), std::string::npos) << hints[1];
    // The sample's first character beyond ASCII is the ü of its office's town.
    EXPECT_EQ(hints[2], "Hinweis: Die Steuerdatei enthält " + std::to_string(umlauts) +
                            " Zeichen in UTF-8 (z. B. «ü», gelesen als «Ã¼»). Das Fakturaprogramm schreibt "
                            "ANSI (Windows-1252); diese Zeichen werden verfälscht gelesen.");

    // A single row saved with LF alone, in an otherwise intact file.
    std::string oneRow = sample;
    oneRow.erase(oneRow.find("\r\n", oneRow.find("\r\n") + 2), 1);
    EXPECT_EQ(
        ControlFileHints::of(oneRow),
        std::vector<std::string>{"Hinweis: 1 Zeile der Steuerdatei endet nur mit LF statt mit CR LF "
                                 "(Windows-Zeilenende des Fakturaprogramms); sie wird mit der folgenden "
                                 "Zeile zusammen gelesen."});
    // Broken and overlong sequences are no UTF-8 characters.
    EXPECT_TRUE(
        ControlFileHints::of("A;B\r\n\xC3;\xC0\xAF;\xE0\x80\xAF;\xED\xA0\x80;\xF4\x90\x80\x80\r\n").empty());
}
