#include "qrbill/QRBillChecks.h"

#include <algorithm>
#include <array>
#include <string>

namespace wordbm {

namespace {

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}
bool isUpper(char c) {
    return c >= 'A' && c <= 'Z';
}
bool allDigits(std::string_view text) {
    return std::all_of(text.begin(), text.end(), isDigit);
}

std::optional<int> alphanumericValue(char c) {
    if (isDigit(c))
        return c - '0';
    if (isUpper(c))
        return c - 'A' + 10;
    return std::nullopt;
}

// Moves the first four characters to the end, as IBAN and creditor reference checks both do.
std::string rotateFour(std::string_view text) {
    return std::string(text.substr(4)) + std::string(text.substr(0, 4));
}

} // namespace

std::optional<int> alphanumericMod97(std::string_view text) {
    int remainder = 0;
    for (char c : text) {
        const auto value = alphanumericValue(c);
        if (!value)
            return std::nullopt;
        // Letters stand for two digits, so they shift the remainder by 100 instead of 10.
        remainder = (remainder * (*value >= 10 ? 100 : 10) + *value) % 97;
    }
    return remainder;
}

bool hasValidIbanCheckDigits(std::string_view iban) {
    if (iban.size() < 5)
        return false;
    return alphanumericMod97(rotateFour(iban)) == 1;
}

bool isQrIban(std::string_view iban) {
    if (iban.size() != 21 || !(iban.starts_with("CH") || iban.starts_with("LI")))
        return false;
    const std::string_view iid = iban.substr(4, 5);
    return allDigits(iid) && iid >= "30000" && iid <= "31999";
}

std::optional<char> qrReferenceCheckDigit(std::string_view digits) {
    static constexpr std::array<int, 10> table{0, 9, 4, 6, 8, 2, 7, 1, 3, 5};
    if (!allDigits(digits))
        return std::nullopt;
    int carry = 0;
    for (char c : digits)
        carry = table[static_cast<std::size_t>((carry + (c - '0')) % 10)];
    return static_cast<char>('0' + (10 - carry) % 10);
}

std::string completeQrReference(std::string_view body) {
    if (body.size() > 26 || !allDigits(body))
        return {};
    std::string reference(26 - body.size(), '0');
    reference += body;
    reference += *qrReferenceCheckDigit(reference);
    return reference;
}

bool isValidQrReference(std::string_view reference) {
    return reference.size() == 27 && allDigits(reference) &&
           qrReferenceCheckDigit(reference.substr(0, 26)) == reference.back();
}

bool isValidCreditorReference(std::string_view reference) {
    if (reference.size() < 5 || reference.size() > 25 || !reference.starts_with("RF") ||
        !allDigits(reference.substr(2, 2)))
        return false;
    return alphanumericMod97(rotateFour(reference)) == 1;
}

bool isPermittedCharacter(char32_t c) {
    return (c >= 0x20 && c <= 0x7E) || (c >= 0xA0 && c <= 0x17F) || (c >= 0x218 && c <= 0x21B) || c == 0x20AC;
}

bool isSupportedVersion(std::string_view version) {
    return version.size() == 4 && allDigits(version) && version.starts_with("02");
}

std::vector<std::string> headerProblems(std::string_view qrType, std::string_view version,
                                        std::string_view codingType) {
    // Without "SPC" the text is no QR-bill at all, and the other header elements mean nothing.
    if (qrType != "SPC")
        return {"QR-Typ: \"SPC\" erwartet"};
    std::vector<std::string> problems;
    if (!isSupportedVersion(version))
        problems.push_back("Version: nicht unterstützt (0200 erwartet)");
    if (codingType != "1")
        problems.push_back("Codierung: \"1\" (UTF-8) erwartet");
    return problems;
}

bool isCountryCode(std::string_view code) {
    // The officially assigned codes of ISO 3166-1 alpha-2, by first letter, each followed by a blank.
    static constexpr std::string_view Assigned =
        "AD AE AF AG AI AL AM AO AQ AR AS AT AU AW AX AZ "
        "BA BB BD BE BF BG BH BI BJ BL BM BN BO BQ BR BS BT BV BW BY BZ "
        "CA CC CD CF CG CH CI CK CL CM CN CO CR CU CV CW CX CY CZ "
        "DE DJ DK DM DO DZ "
        "EC EE EG EH ER ES ET "
        "FI FJ FK FM FO FR "
        "GA GB GD GE GF GG GH GI GL GM GN GP GQ GR GS GT GU GW GY "
        "HK HM HN HR HT HU "
        "ID IE IL IM IN IO IQ IR IS IT "
        "JE JM JO JP "
        "KE KG KH KI KM KN KP KR KW KY KZ "
        "LA LB LC LI LK LR LS LT LU LV LY "
        "MA MC MD ME MF MG MH MK ML MM MN MO MP MQ MR MS MT MU MV MW MX MY MZ "
        "NA NC NE NF NG NI NL NO NP NR NU NZ "
        "OM "
        "PA PE PF PG PH PK PL PM PN PR PS PT PW PY "
        "QA "
        "RE RO RS RU RW "
        "SA SB SC SD SE SG SH SI SJ SK SL SM SN SO SR SS ST SV SX SY SZ "
        "TC TD TF TG TH TJ TK TL TM TN TO TR TT TV TW TZ "
        "UA UG UM US UY UZ "
        "VA VC VE VG VI VN VU "
        "WF WS "
        "YE YT "
        "ZA ZM ZW ";
    if (code.size() != 2 || code.find(' ') != std::string_view::npos) {
        return false;
    }
    // With the blank behind it a match cannot straddle two codes.
    return Assigned.find(std::string(code) + ' ') != std::string_view::npos;
}

} // namespace wordbm
