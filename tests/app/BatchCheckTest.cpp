#include "app/BatchCheck.h"

#include "kit/EnvGuard.h"
#include "kit/FileBytes.h"
#include "kit/TempDir.h"
#include "support/Cp1252.h"

#include <gtest/gtest.h>
#include <sstream>

namespace wordbm {
namespace {

class BatchCheckTest : public ::testing::Test {
protected:
    void SetUp() override {
        const std::string head =
            "RgNummer;RgDatum;KliName;BankKto;BesrBet;BesrRefNr;Referenz;BueroAdr1;BueroAdr2;"
            "BueroAdr3;KliAdr1;KliAdr2;KliAdr3\r\n";
        const std::string office = "Treuhand Müller AG;Bahnhofstrasse 7;8001 Zürich";
        writeBytes(csv_,
                   utf8ToCp1252(
                       head +
                       "1001;21.11.2026;Dupré;CH44 3199 9123 0008 8901 2;1'250.00;21 00000 00003 13947 14300 "
                       "09017;Rechnung 1001;" +
                       office + ";Renée Dupré;Rue du Lac 2;1200 Genève\r\n" +
                       // the IBAN's check digits are wrong
                       "1002;21.11.2026;Meier;CH45 3199 9123 0008 8901 2;80.00;21 00000 00003 13947 14300 "
                       "09017;;" +
                       office + ";Hans Meier;Weg 1;3000 Bern\r\n" +
                       // no invoice date: not an invoice, not checked
                       "1003;;Leer;XX00;;;;;;;;;\r\n"));
    }

    TempDir folder_;
    std::string csv_ = folder_ / "lauf.csv";
    std::ostringstream out_;
    std::ostringstream err_;
    BatchCheck batch_{out_, err_};
};

// A clerk fixed a row in a spreadsheet, which saved the file with LF alone: it reads as one line.
TEST_F(BatchCheckTest, AFileWithLfLineEndsHoldsNoInvoiceAndTheCheckSaysWhy) {
    const std::string saved = folder_ / "lf.csv";
    std::string bytes = readBytes(csv_);
    for (auto at = bytes.find("\r\n"); at != std::string::npos; at = bytes.find("\r\n", at)) {
        bytes.erase(at, 1);
    }
    writeBytes(saved, bytes);

    EXPECT_EQ(batch_.check(saved), 2);

    const std::string text = err_.str();
    EXPECT_NE(text.find("Hinweis: Die Zeilen der Steuerdatei enden nur mit LF"), std::string::npos) << text;
    EXPECT_NE(text.find(saved + "\nDie Steuerdatei enthält keine Rechnungen.\n"), std::string::npos) << text;
    EXPECT_EQ(out_.str(), "");
}

TEST_F(BatchCheckTest, CheckListsWarningsOfInvoiceRowsOnly) {
    EXPECT_EQ(batch_.check(csv_), 1);
    const auto text = out_.str();
    EXPECT_EQ(text.find("Zeile 1,"), std::string::npos) << text;
    EXPECT_NE(text.find("Zeile 2, Rechnung 1002, Meier:\n  - "), std::string::npos) << text;
    EXPECT_EQ(text.find("Zeile 3"), std::string::npos) << "a row without invoice date is skipped";
    EXPECT_NE(text.find("2 Rechnungen geprüft, 1 mit Warnungen"), std::string::npos) << text;
}

// The code would carry 0.00 while the payment part shows the empty box for the payer to fill.
TEST_F(BatchCheckTest, CheckWarnsAboutAZeroAmount) {
    const std::string zero = folder_ / "null.csv";
    writeBytes(zero,
               utf8ToCp1252("RgNummer;RgDatum;KliName;BankKto;BesrBet;BesrRefNr;Referenz;BueroAdr1;"
                            "BueroAdr2;BueroAdr3;KliAdr1;KliAdr2;KliAdr3\r\n"
                            "1005;21.11.2026;Dupré;CH44 3199 9123 0008 8901 2;0.00;21 00000 00003 13947 "
                            "14300 09017;Rechnung 1005;Treuhand Müller AG;Bahnhofstrasse 7;8001 Zürich;"
                            "Renée Dupré;Rue du Lac 2;1200 Genève\r\n"));
    EXPECT_EQ(batch_.check(zero), 1);
    EXPECT_NE(
        out_.str().find("Betrag: der QR-Code trägt 0.00, der Zahlteil zeigt aber das leere Betragsfeld"),
        std::string::npos)
        << out_.str();
}

TEST_F(BatchCheckTest, QrcodeWritesPayloadAndPicture) {
    EXPECT_EQ(batch_.qrcode(csv_, 1, folder_ / "r1.png", true), 0);
    const auto payload = out_.str();
    EXPECT_EQ(payload.rfind("SPC\n0200\n1\nCH4431999123000889012\nS\nTreuhand M\xC3\xBCller AG\r\n", 0), 0u);
    EXPECT_EQ(payload.substr(payload.size() - 4), "\nEPD") << "exact bytes, nothing appended";
    EXPECT_EQ(readBytes(folder_ / "r1.png").substr(1, 3), "PNG");

    EXPECT_EQ(batch_.qrcode(csv_, 9, {}, true), 2);
    EXPECT_NE(err_.str().find("Zeile 9 gibt es nicht"), std::string::npos);
}

TEST_F(BatchCheckTest, UnusableControlFilesAreRefused) {
    EXPECT_EQ(batch_.check(folder_ / "fehlt.csv"), 2);
    EXPECT_NE(err_.str().find("Datei nicht gefunden!"), std::string::npos);
    writeBytes(folder_ / "leer.csv", "");
    EXPECT_EQ(batch_.check(folder_ / "leer.csv"), 2);
    EXPECT_NE(err_.str().find("keine Rechnungen"), std::string::npos);
    // A header alone, or a binary file, holds no invoice that could have passed the check.
    writeBytes(folder_ / "kopf.csv", "RgNummer;RgDatum;KliName\r\n");
    writeBytes(folder_ / "bild.csv",
               readBytes(std::string(WORDBM_TEST_SOURCE_DIR) + "/../../examples/Rechnung.docx"));
    for (const char* name : {"kopf.csv", "bild.csv"}) {
        err_.str("");
        EXPECT_EQ(batch_.check(folder_ / name), 2) << name;
        EXPECT_NE(err_.str().find("Die Steuerdatei enthält keine Rechnungen."), std::string::npos) << name;
    }
}

} // namespace
} // namespace wordbm
