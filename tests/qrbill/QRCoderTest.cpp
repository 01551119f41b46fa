#include "qrbill/QRCoder.h"

#include "data/CSVfile.h"
#include "kit/FileBytes.h"
#include "kit/TempDir.h"
#include "qrbill/Trans.h"
#include "support/Cp1252.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace wordbm {
namespace {

constexpr const char* Header = "BankKto;BesrBet;BesrBetTF;BesrBetTR;BesrRefNr;Referenz;BueroAdr1;BueroAdr2;"
                               "BueroAdr3;BueroAdr4;BueroAdr5;KliAdr1;KliAdr2;KliAdr3;KliAdr4;KliAdr5";

class QRCoderTest : public ::testing::Test {
protected:
    void SetUp() override {
        writeBytes(path_, utf8ToCp1252(
                              std::string(Header) + "\r\n" +
                              // 1: an ordinary invoice with umlauts in both addresses
                              "CH44 3199 9123 0008 8901 2;1'234.50;1234;50;21 00000 00003 13947 14300 09017;"
                              "Rechnung 4711;Treuhand Müller AG;Bahnhofstrasse 7;8001 Zürich;;;"
                              "Frau;Renée Dupré;Rue du Lac 2;1200 Genève;\r\n" +
                              // 2: no amount, no reference, no message, no debtor
                              "CH4431999123000889012;;;;;;Büro €uro;Weg 1;3000 Bern;;;;;;;\r\n" +
                              // 3: a zero amount and one that is no number
                              "CH4431999123000889012;0.00;;;;;;;;;;;;;;\r\n" +
                              "CH4431999123000889012;zwölf;;;;;;;;;;;;;;\r\n" +
                              // 5: line breaks inside values (a CR LF would end the row itself)
                              "CH4431999123000889012;10.00;;;;\"Rechnung\r4711\";Büro;Weg 1;3000 Bern;;;"
                              "\"Renée\nDupré\";\"Rue du Lac\n\n2\";1200 Genève;;\r\n"));
    }

    CSVfile& data() {
        csv_.ReadFile(path_);
        return csv_;
    }

    TempDir folder_;
    const std::string path_ = folder_ / "lauf.csv";
    CSVfile csv_;
};

std::string crlf(int count) {
    std::string text;
    for (int i = 0; i < count; ++i) {
        text += "\r\n";
    }
    return text;
}

// Counts elements with CR LF and LF each counted once as a line break.
std::size_t elementCount(const std::string& payload) {
    std::size_t breaks = 0;
    for (std::size_t i = 0; i < payload.size(); ++i) {
        if (payload[i] == '\n' || (payload[i] == '\r' && i + 1 < payload.size() && payload[i + 1] == '\n')) {
            ++breaks;
            if (payload[i] == '\r') {
                ++i;
            }
        }
    }
    return breaks + 1;
}

TEST_F(QRCoderTest, PayloadIsByteExact) {
    QRCoder coder(data());
    const std::string expected = "SPC\n0200\n1\nCH4431999123000889012\nS\n"
                                 "Treuhand Müller AG\r\nBahnhofstrasse\r\n7\r\n8001\r\nZürich\r\nCH\r\n\n"
                                 "\r\n\r\n\r\n\r\n\r\n\n"
                                 "1234.50\nCHF\nS\n"
                                 "Renée Dupré\r\nRue du Lac\r\n2\r\n1200\r\nGenève\r\nCH\n"
                                 "QRR\n210000000003139471430009017\nRechnung 4711\nEPD";
    EXPECT_EQ(coder.QRText(1), expected);
    EXPECT_EQ(elementCount(expected), 31u);
    // "ü" and "é" stand as their two UTF-8 bytes.
    EXPECT_NE(expected.find("M\xC3\xBCller"), std::string::npos);
    EXPECT_NE(expected.find("Ren\xC3\xA9"), std::string::npos);
}

TEST_F(QRCoderTest, EmptyFieldsKeepTheStructure) {
    QRCoder coder(data());
    const auto payload = coder.QRText(2);
    EXPECT_EQ(elementCount(payload), 31u);
    EXPECT_NE(payload.find("B\xC3\xBCro \xE2\x82\xACuro"), std::string::npos) << "€ in UTF-8";
    EXPECT_NE(payload.find("\n\nCHF\nS\n\r\n\r\n\r\n\r\n\r\n\nQRR\n\n\nEPD"), std::string::npos);
    EXPECT_EQ(payload.substr(payload.size() - 4), "\nEPD") << "nothing follows the trailer";

    // A row that does not exist still writes every constant.
    const auto missing = coder.QRText(99);
    EXPECT_EQ(elementCount(missing), 31u);
    EXPECT_EQ(missing.rfind("SPC\n0200\n1\n\nS\n", 0), 0u);
}

// A line break would end a payload element early and shift every element behind it.
TEST_F(QRCoderTest, LineBreaksInsideValuesNeverReachThePayload) {
    QRCoder coder(data());
    const auto payload = coder.QRText(5);
    EXPECT_EQ(elementCount(payload), 31u) << payload;
    EXPECT_NE(payload.find("\nS\nRenée Dupré\r\nRue du Lac\r\n2\r\n1200\r\nGenève\r\nCH\nQRR\n"),
              std::string::npos)
        << payload;
    EXPECT_EQ(payload.substr(payload.size() - 18), "\nRechnung 4711\nEPD");
}

TEST_F(QRCoderTest, SlipTexts) {
    QRCoder coder(data());
    EXPECT_EQ(coder.IBAN(1), "CH44 3199 9123 0008 8901 2") << "blanks stay in the printed account";
    EXPECT_EQ(coder.KontoAn(1), "CH44 3199 9123 0008 8901 2\r\nTreuhand Müller AG\r\nBahnhofstrasse 7\r\n"
                                "8001 Zürich\r\nCH");
    EXPECT_EQ(coder.KontoVon(1), "Renée Dupré\r\nRue du Lac 2\r\n1200 Genève\r\nCH");
    EXPECT_EQ(coder.KontoVon(3), "\r\n\r\n\r\n\r\n")
        << "an empty block is four CR LF; only blanks are trimmed";
    EXPECT_EQ(coder.Referenz(1), "21 00000 00003 13947 14300 09017");
    EXPECT_EQ(coder.Amount(1), "1234  .  50");
    EXPECT_EQ(coder.Betrag(1), "1 234.50");
    EXPECT_EQ(coder.Betrag(2), "");
    EXPECT_EQ(coder.Betrag(3), "") << "zero";
    EXPECT_EQ(coder.Betrag(4), "") << "not a number";
    EXPECT_NE(coder.QRText(4).find("\nzwölf\nCHF"), std::string::npos) << "the payload carries it unchanged";
    EXPECT_EQ(coder.Receiver(1), "\r\n\r\n\r\n\r\n\r\n");
    EXPECT_EQ(coder.ReceiverFinal(3), "\r\n\r\n\r\n\r\n\r\n\r\n")
        << "the empty address and the closing CR LF";
    EXPECT_EQ(coder.ReceiverBlock(3), crlf(5 + 1 + 6 + 1) + "CH4431999123000889012")
        << "empty address, CR LF, empty creditor with its closing CR LF, CR LF, account";
    EXPECT_EQ(coder.Zusatz(1), "Rechnung 4711");
    EXPECT_EQ(coder.Info(1), "");
    EXPECT_EQ(coder.Ccy(1) + coder.Waehrung(1), "CHFCHF");
}

TEST(QRCoderAmount, FormatsFrancsWithOneBlank) {
    EXPECT_EQ(QRCoder::formatPrintedAmount("1234.5"), "1 234.50");
    EXPECT_EQ(QRCoder::formatPrintedAmount("999"), "999.00");
    EXPECT_EQ(QRCoder::formatPrintedAmount("1234567.5"), "1234 567.50")
        << "only one blank, also for millions";
    EXPECT_EQ(QRCoder::formatPrintedAmount("0.005"), "0.01") << "half rounds away from zero";
    EXPECT_EQ(QRCoder::formatPrintedAmount("-5"), "");
    EXPECT_EQ(QRCoder::formatPrintedAmount(""), "");

    std::string text;
    QRCoder::AddLine(text, "   ");
    EXPECT_EQ(text, "");
    QRCoder::AddLine(text, " a ");
    QRCoder::AddLine(text, "b");
    EXPECT_EQ(text, "a\r\nb");
}

TEST(Trans, WordingsByLanguageInitial) {
    const Trans trans;
    EXPECT_EQ(trans.Text("BetragTX", "Französisch"), "Montant");
    EXPECT_EQ(trans.Text("BetragTX", "Englisch"), "Amount");
    EXPECT_EQ(trans.Text("ZusatzTX", "Deutsch"), "Zusätzliche Informationen");
    EXPECT_EQ(trans.Text("AbzutrennenTX", "Französisch"), "A détacher avant le versement");
    EXPECT_EQ(trans.Text("KontoAnTX", "Italienisch"), "Conto / Pagabile a");
    EXPECT_EQ(trans.Text("QRCodeTX", "Deutsch"), "");
    EXPECT_EQ(trans.Text("BetragTX", "Rätoromanisch"), "");
    EXPECT_EQ(trans.Text("BetragTX", ""), "");
}

} // namespace
} // namespace wordbm
