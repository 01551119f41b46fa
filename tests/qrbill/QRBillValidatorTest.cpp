#include "qrbill/QRBillValidator.h"

#include "qrbill/QRBillChecks.h"

#include <filesystem>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <regex>
#include <sstream>

namespace wordbm {
namespace {

const std::filesystem::path CorpusDir = std::filesystem::path(WORDBM_CORPUS_DIR) / "qrbill";

struct CorpusRow {
    std::string file;
    bool valid = false;
    std::string expected; // what one of the warnings of an invalid payload must match
};

// The manifest's reason codes, in the subjects our warnings name; the first key found counts.
std::string expectedFor(const std::string& note) {
    static const std::pair<const char*, const char*> reasons[] = {
        {"KEY_NUMBER_INVALID", "^Betrag:"},
        {"on trailer", "\"EPD\""},
        {"KEY_VERSION_UNSUPPORTED", "^Version:"},
        {"KEY_CODING_TYPE_UNSUPPORTED", "^Codierung:"},
        {"KEY_DATA_STRUCTURE_INVALID", "^(Aufbau|QR-Typ):"},
        {"too many lines", "^Aufbau:"}};
    for (const auto& [key, expected] : reasons)
        if (note.find(key) != std::string::npos)
            return expected;
    return "reason not understood";
}

std::vector<CorpusRow> payloadRows() {
    std::ifstream manifest(CorpusDir / "MANIFEST.tsv");
    std::vector<CorpusRow> rows;
    for (std::string line; std::getline(manifest, line);) {
        std::vector<std::string> cells;
        std::istringstream split(line);
        for (std::string cell; std::getline(split, cell, '\t');)
            cells.push_back(cell);
        if (cells.size() == 7 && cells[0].ends_with(".txt") && cells[0].find('/') == std::string::npos)
            rows.push_back({cells[0], cells[5].starts_with("valid"), expectedFor(cells[6])});
    }
    return rows;
}

// The manifest marks combined addresses (K) valid, as banks took them before November 2025; they
// now get the one warning that says so, and nothing else.
std::vector<std::string> combinedAddressWarnings(const std::string& text) {
    const auto payload = SwissPayload::parse(text);
    std::vector<std::string> expected;
    for (const auto& [address, who] : {std::pair{payload->creditor, "Zahlungsempfänger"},
                                       std::pair{payload->ultimateDebtor, "Zahlungspflichtiger"}})
        if (address.type == "K")
            expected.push_back(std::string(who) +
                               ": kombinierte Adresse (K) nehmen die Banken seit "
                               "November 2025 nicht mehr an; strukturierte Adresse (S) verwenden");
    return expected;
}

TEST(QRBillCorpus, ManifestListsTheExpectedPayloads) {
    const auto rows = payloadRows();
    EXPECT_EQ(std::count_if(rows.begin(), rows.end(), [](const auto& r) { return r.valid; }), 52);
    EXPECT_EQ(rows.size(), 64u);
    const auto combined = std::count_if(rows.begin(), rows.end(), [](const auto& r) {
        std::ifstream in(CorpusDir / r.file, std::ios::binary);
        return r.valid &&
               !combinedAddressWarnings(std::string(std::istreambuf_iterator<char>(in), {})).empty();
    });
    EXPECT_EQ(combined, 4);
}

void PrintTo(const CorpusRow& row, std::ostream* os) {
    *os << row.file;
}

class QRBillCorpus : public testing::TestWithParam<CorpusRow> {};

TEST_P(QRBillCorpus, ClassifiedAsTheManifestSays) {
    std::ifstream in(CorpusDir / GetParam().file, std::ios::binary);
    const std::string text(std::istreambuf_iterator<char>(in), {});
    const auto warnings = QRBillValidator::validate(text);
    if (GetParam().valid) {
        EXPECT_EQ(warnings, combinedAddressWarnings(text));
        return;
    }
    const std::regex expected(GetParam().expected);
    const auto matches = [&expected](const std::string& w) { return std::regex_search(w, expected); };
    EXPECT_TRUE(std::any_of(warnings.begin(), warnings.end(), matches)) << testing::PrintToString(warnings);
}

INSTANTIATE_TEST_SUITE_P(Manifest, QRBillCorpus, testing::ValuesIn(payloadRows()), [](const auto& testInfo) {
    std::string name = testInfo.param.file.substr(0, testInfo.param.file.size() - 4);
    std::replace_if(
        name.begin(), name.end(), [](char c) { return !std::isalnum(static_cast<unsigned char>(c)); }, '_');
    return name;
});

// QR-IBAN, QR reference, structured creditor and debtor: a payload without warnings.
SwissPayload goodPayload() {
    return *SwissPayload::parse(
        "SPC\n0200\n1\nCH4431999123000889012\nS\nRobert Schneider AG\nRue du Lac\n1268\n"
        "2501\nBiel\nCH\n\n\n\n\n\n\n\n1949.75\nCHF\nS\nPia Rutschmann\nMarktgasse\n28\n"
        "9400\nRorschach\nCH\nQRR\n210000000003139471430009017\nRechnung 3139\nEPD");
}

struct Rule {
    const char* name;
    std::function<void(SwissPayload&)> change;
    const char* expected; // part of the warning, or "" for a payload that must stay clean
};

void toOrdinaryIban(SwissPayload& p, const char* type = "NON", const char* reference = "") {
    p.account = "CH5800791123000889012";
    p.referenceType = type;
    p.reference = reference;
}

const Rule Rules[] = {
    {"BaseIsClean", [](auto&) {}, ""},
    {"IbanCheckDigitsBad", [](auto& p) { p.account[3] = '5'; }, "IBAN: Prüfziffer falsch"},
    {"IbanLiechtenstein", [](auto& p) { toOrdinaryIban(p), p.account = "LI21088100002324013AA"; }, ""},
    {"IbanForeign", [](auto& p) { toOrdinaryIban(p), p.account = "DE89370400440532013000"; }, "(CH) oder"},
    {"IbanLength", [](auto& p) { p.account += "0"; }, "21 Zeichen"},
    {"IbanBlanks", [](auto& p) { p.account.insert(4, " "); }, "ohne Leerzeichen"},
    {"QrIbanWithoutQrr", [](auto& p) { p.referenceType = "NON", p.reference = ""; },
     "QR-IBAN verlangt eine QR-Ref"},
    {"QrrWithOrdinaryIban", [](auto& p) { p.account = "CH5800791123000889012"; }, "nur mit einer QR-IBAN"},
    {"QrIbanLowestIid", [](auto& p) { p.account = "CH5730000123000889012"; }, ""},
    {"IidAboveQrRange", [](auto& p) { p.account = "CH5232000123000889012"; }, "nur mit einer QR-IBAN"},
    {"QrrCheckDigit", [](auto& p) { p.reference.back() = '8'; }, "Prüfziffer der QR-Referenz"},
    {"QrrLength", [](auto& p) { p.reference.pop_back(); }, "27 Ziffern"},
    {"QrrMissing", [](auto& p) { p.reference = ""; }, "QR-Referenz fehlt"},
    {"ScorGood", [](auto& p) { toOrdinaryIban(p, "SCOR", "RF18539007547034"); }, ""},
    {"ScorBad", [](auto& p) { toOrdinaryIban(p, "SCOR", "RF19539007547034"); }, "Creditor Reference"},
    {"NonWithReference", [](auto& p) { toOrdinaryIban(p, "NON", "RF18539007547034"); }, "NON leer"},
    {"ReferenceTypeUnknown", [](auto& p) { p.referenceType = "ESR"; }, "Referenztyp"},
    {"AmountEmpty", [](auto& p) { p.amount = ""; }, ""},
    {"AmountNotification", [](auto& p) { p.amount = "0.00"; }, ""},
    {"AmountHighest", [](auto& p) { p.amount = "999999999.99"; }, ""},
    {"AmountTooHigh", [](auto& p) { p.amount = "1000000000.00"; }, "höchstens 999999999.99"},
    {"AmountOneDecimal", [](auto& p) { p.amount = "1234.5"; }, "Betrag: Zahl mit Punkt"},
    {"AmountLeadingZero", [](auto& p) { p.amount = "01.00"; }, "Betrag: Zahl mit Punkt"},
    {"CurrencyEuro", [](auto& p) { p.currency = "EUR"; }, ""},
    {"CurrencyOther", [](auto& p) { p.currency = "USD"; }, "Währung"},
    {"NameLongest", [](auto& p) { p.creditor.name.assign(70, 'n'); }, ""},
    {"NameTooLong", [](auto& p) { p.creditor.name.assign(71, 'n'); }, "Name länger als 70"},
    {"NameCountsCharacters", [](auto& p) { p.creditor.name = std::string(69, 'n') + "ü"; }, ""},
    {"StreetTooLong", [](auto& p) { p.creditor.streetOrLine1.assign(71, 's'); }, "Strasse länger als 70"},
    {"HouseNumberTooLong", [](auto& p) { p.ultimateDebtor.houseNumberOrLine2.assign(17, '1'); },
     "Hausnummer länger"},
    {"PostcodeLongest", [](auto& p) { p.creditor.postcode.assign(16, '1'); }, ""},
    {"PostcodeTooLong", [](auto& p) { p.creditor.postcode.assign(17, '1'); }, "PLZ länger als 16"},
    {"PostcodeMissing", [](auto& p) { p.creditor.postcode = ""; }, "PLZ fehlt"},
    {"TownTooLong", [](auto& p) { p.creditor.town.assign(36, 't'); }, "Ort länger als 35"},
    {"CountryForeign", [](auto& p) { p.ultimateDebtor.country = "DE"; }, ""},
    {"CountryWord", [](auto& p) { p.creditor.country = "Schweiz"; }, "zweistelliger Ländercode"},
    {"CountryLiechtenstein", [](auto& p) { p.creditor.country = "LI"; }, ""},
    {"CountryZimbabwe", [](auto& p) { p.ultimateDebtor.country = "ZW"; }, ""},
    {"CountryUnassigned", [](auto& p) { p.ultimateDebtor.country = "XX"; }, "Land XX ist kein Ländercode"},
    {"CountryAcrossTwoCodes", [](auto& p) { p.ultimateDebtor.country = "HA"; }, "Land HA ist kein"},
    {"CreditorNameMissing", [](auto& p) { p.creditor.name = ""; }, "Zahlungsempfänger: Name fehlt"},
    {"CombinedAddress",
     [](auto& p) { p.ultimateDebtor = {"K", "Pia", "Marktgasse 28", "9400 Rorschach", "", "", "CH"}; },
     "Zahlungspflichtiger: kombinierte Adresse (K) nehmen die Banken seit November 2025 nicht mehr an"},
    {"CombinedWithPostcode", [](auto& p) { p.ultimateDebtor.type = "K"; }, "PLZ und Ort leer"},
    {"CombinedLine2Missing", [](auto& p) { p.ultimateDebtor = {"K", "Pia", "a", "", "", "", "CH"}; },
     "Adresszeile 2 fehlt"},
    {"AddressTypeUnknown", [](auto& p) { p.creditor.type = "X"; }, "Adresstyp S oder K"},
    {"DebtorLeftOut", [](auto& p) { p.ultimateDebtor = {}; }, ""},
    {"DebtorTypeOnly", [](auto& p) { p.ultimateDebtor = {"S", "", "", "", "", "", ""}; },
     "Zahlungspflichtiger: Adresstyp ohne Adresse"},
    {"UltimateCreditorFilled", [](auto& p) { p.ultimateCreditor.name = "X"; }, "muss leer bleiben"},
    {"MessageAndBillingAtLimit", [](auto& p) { p.billingInformation = std::string(140 - 13, 'b'); }, ""},
    {"MessageAndBillingTooLong", [](auto& p) { p.billingInformation = std::string(141 - 13, 'b'); },
     "länger als 140"},
    {"PermittedCharacters", [](auto& p) { p.creditor.name = "Ștefan Țară Łódź Œuvre Ÿ ~ 20 €"; }, ""},
    {"CheckMark", [](auto& p) { p.creditor.town = "Zürich ✓"; }, "U+2713 in Zahlungsempfänger Ort"},
    {"LatinExtendedB", [](auto& p) { p.creditor.name = "\u0180"; }, "U+0180"},
    {"ControlCharacter", [](auto& p) { p.unstructuredMessage = "a\tb"; }, "U+0009"},
    {"BrokenUtf8", [](auto& p) { p.unstructuredMessage = "Z\xC3rich"; }, "kein gültiges UTF-8"},
    {"MinorVersion", [](auto& p) { p.version = "0201"; }, ""},
    {"MajorVersion", [](auto& p) { p.version = "0300"; }, "Version"},
    {"CodingType", [](auto& p) { p.codingType = "2"; }, "Codierung"},
    {"QrType", [](auto& p) { p.qrType = "SPD"; }, "QR-Typ"},
    {"Trailer", [](auto& p) { p.trailer = "EPD "; }, "\"EPD\" erwartet"},
    {"TwoProcedures", [](auto& p) { p.alternativeProcedures.assign(2, std::string(100, 'a')); }, ""},
    {"ThreeProcedures", [](auto& p) { p.alternativeProcedures.assign(3, "a"); }, "höchstens zwei"},
    {"ProcedureTooLong", [](auto& p) { p.alternativeProcedures.assign(1, std::string(101, 'a')); },
     "höchstens 100"},
    {"PayloadTooLong", [](auto& p) { p.alternativeProcedures.assign(1, std::string(990, 'a')); },
     "länger als 997"},
    // What the QR code holds is counted in bytes: some 800 characters, some 1,400 bytes.
    {"PayloadTooManyBytes",
     [](auto& p) {
         const auto umlauts = [](std::size_t count) {
             std::string text;
             for (std::size_t i = 0; i < count; ++i)
                 text += "ü";
             return text;
         };
         p.unstructuredMessage = umlauts(140);
         p.creditor.name = p.creditor.streetOrLine1 = umlauts(70);
         p.ultimateDebtor.name = p.ultimateDebtor.streetOrLine1 = umlauts(70);
         p.billingInformation = "";
         p.alternativeProcedures.assign(2, umlauts(100));
     },
     "997 Bytes"},
};

void PrintTo(const Rule& rule, std::ostream* os) {
    *os << rule.name;
}

class QRBillRule : public testing::TestWithParam<Rule> {};

TEST_P(QRBillRule, WarnsOnlyWhenBroken) {
    SwissPayload p = goodPayload();
    GetParam().change(p);
    const auto warnings = QRBillValidator::validate(p);
    const std::string expected = GetParam().expected;
    const auto hit = [&](const std::string& w) { return w.find(expected) != std::string::npos; };
    if (expected.empty())
        EXPECT_EQ(warnings, std::vector<std::string>{});
    else
        EXPECT_TRUE(std::any_of(warnings.begin(), warnings.end(), hit)) << testing::PrintToString(warnings);
}

INSTANTIATE_TEST_SUITE_P(Rules, QRBillRule, testing::ValuesIn(Rules),
                         [](const auto& testInfo) { return std::string(testInfo.param.name); });

TEST(QRBillText, BytesBeyondTheCodesCapacityAreReportedAsTheEncoderCountsThem) {
    const auto payload = [](const std::string& letter) {
        std::string name, town, message;
        for (int i = 0; i < 70; ++i)
            name += letter, message += letter + letter, town += i < 35 ? letter : "";
        return "SPC\n0200\n1\nCH4431999123000889012\nS\n" + name + "\n" + name + "\n1268\n2501\n" + town +
               "\nCH\n\n\n\n\n\n\n\n1949.75\nCHF\nS\n" + name + "\n" + name + "\n28\n9400\n" + town +
               "\nCH\nQRR\n210000000003139471430009017\n" + message + "\nEPD";
    };
    ASSERT_LT(payload("u").size(), QRBillValidator::MaxPayloadBytes);
    EXPECT_EQ(QRBillValidator::validate(payload("u")), std::vector<std::string>{});
    // As many characters, but every umlaut takes two bytes.
    ASSERT_GT(payload("ü").size(), QRBillValidator::MaxPayloadBytes);
    EXPECT_EQ(
        QRBillValidator::validate(payload("ü")),
        std::vector<std::string>{"Aufbau: Inhalt länger als 997 Bytes (UTF-8), zu lang für den QR-Code"});
}

TEST(QRBillText, AZeroAmountIsWarnedAboutWhereTheSlipShowsTheEmptyBox) {
    const std::string payload =
        "SPC\n0200\n1\nCH4431999123000889012\nS\nRobert Schneider AG\nRue du Lac\n1268\n2501\nBiel\nCH\n"
        "\n\n\n\n\n\n\n0.00\nCHF\nS\nPia Rutschmann\nMarktgasse\n28\n9400\nRorschach\nCH\nQRR\n"
        "210000000003139471430009017\nRechnung 3139\nEPD";
    EXPECT_EQ(QRBillValidator::validate(payload), std::vector<std::string>{});
    EXPECT_EQ(QRBillValidator::validatePrinted(payload),
              std::vector<std::string>{"Betrag: der QR-Code trägt 0.00, der Zahlteil zeigt aber das leere "
                                       "Betragsfeld; Betrag angeben oder leer lassen"});
    std::string paid = payload;
    paid.replace(paid.find("0.00"), 4, "10.00");
    EXPECT_EQ(QRBillValidator::validatePrinted(paid), std::vector<std::string>{});
}

TEST(QRBillText, UnreadableTextIsReportedNotChecked) {
    EXPECT_EQ(QRBillValidator::validate(std::string(1000, 'x')),
              (std::vector<std::string>{"QR-Typ: \"SPC\" erwartet",
                                        "Aufbau: 31 bis 34 Elemente erwartet, gefunden 1",
                                        "Aufbau: Inhalt länger als 997 Zeichen"}));
}

TEST(QRReference, CompletedReferencesCarryTheirCheckDigit) {
    EXPECT_EQ(completeQrReference("21000000000313947143000901"), "210000000003139471430009017");
    EXPECT_EQ(completeQrReference("3139"), std::string(22, '0') + "31399");
    EXPECT_EQ(completeQrReference("31a9"), "");
    EXPECT_EQ(completeQrReference(std::string(27, '1')), "");
    for (int body = 0; body < 1000; body += 7) {
        const std::string ref = completeQrReference(std::to_string(body));
        ASSERT_TRUE(isValidQrReference(ref)) << ref;
        for (char wrong = '0'; wrong <= '9'; ++wrong)
            EXPECT_EQ(isValidQrReference(ref.substr(0, 26) + wrong), wrong == ref.back()) << ref;
    }
}

} // namespace
} // namespace wordbm
