#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

// Checks of single QR-bill values, shared by the payload reader, the validator and the sample-data
// generator (which has to make references that banks accept).
namespace wordbm {

// Mod 97 of an alphanumeric text with letters counted as 10..35 (IBAN, creditor reference);
// nullopt when the text holds anything else.
std::optional<int> alphanumericMod97(std::string_view text);

// Check digits of an IBAN in electronic form (no blanks): country code and check digits moved to
// the end, remainder 1. Says nothing about the country or the length.
bool hasValidIbanCheckDigits(std::string_view iban);

// A QR-IBAN is a CH/LI IBAN whose institution id (positions 5 to 9) lies in 30000..31999.
bool isQrIban(std::string_view iban);

// The check digit (recursive mod 10) of a QR reference body made of digits only; nullopt otherwise.
std::optional<char> qrReferenceCheckDigit(std::string_view digits);

// A body of at most 26 digits, padded with leading zeros to 26 and given its check digit;
// empty when the body is longer or holds anything but digits.
std::string completeQrReference(std::string_view body);

// 27 digits whose last one is the check digit of the first 26.
bool isValidQrReference(std::string_view reference);

// ISO 11649: "RF", two check digits, 1 to 21 letters or digits, remainder 1 after rearranging.
bool isValidCreditorReference(std::string_view reference);

// Basic Latin printable, Latin-1 Supplement, Latin Extended-A, the Romanian letters with comma
// below and the euro sign: what the QR-bill lets a payload carry.
bool isPermittedCharacter(char32_t c);

// One of the 249 officially assigned country codes of ISO 3166-1 alpha-2, in capitals.
bool isCountryCode(std::string_view code);

// The version of the data layout this program reads: major version 02, any minor version, since
// minor versions keep the layout and readers are meant to accept them.
bool isSupportedVersion(std::string_view version);

// German warnings about the header (QR type, version, coding type); empty when all three fit.
// A wrong QR type is reported alone.
std::vector<std::string> headerProblems(std::string_view qrType, std::string_view version,
                                        std::string_view codingType);

} // namespace wordbm
