#include "qrbill/QRBillValidator.h"

#include "qrbill/QRBillChecks.h"

#include <algorithm>
#include <cstdio>
#include <optional>
#include <utility>

namespace wordbm {

namespace {

using Warnings = std::vector<std::string>;
using Address = SwissPayload::Address;

constexpr std::string_view Creditor = "Zahlungsempfänger";
constexpr std::string_view Debtor = "Zahlungspflichtiger";

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}
bool isUpperOrDigit(char c) {
    return isDigit(c) || (c >= 'A' && c <= 'Z');
}

// Limits of the QR-bill count characters, not bytes.
std::size_t characterCount(std::string_view utf8) {
    return static_cast<std::size_t>(std::count_if(
        utf8.begin(), utf8.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }));
}

struct LeadByte {
    int continuationBytes;
    char32_t bits;
    char32_t smallest; // below this the sequence is an overlong form
};

std::optional<LeadByte> readLead(unsigned char lead) {
    if ((lead & 0xE0) == 0xC0)
        return LeadByte{1, lead & 0x1Fu, 0x80};
    if ((lead & 0xF0) == 0xE0)
        return LeadByte{2, lead & 0x0Fu, 0x800};
    if ((lead & 0xF8) == 0xF0)
        return LeadByte{3, lead & 0x07u, 0x10000};
    return std::nullopt;
}

std::optional<char32_t> decodeOne(std::string_view text, std::size_t& pos) {
    const auto first = static_cast<unsigned char>(text[pos++]);
    if (first < 0x80)
        return first;
    const auto lead = readLead(first);
    if (!lead)
        return std::nullopt;
    char32_t value = lead->bits;
    for (int i = 0; i < lead->continuationBytes; ++i, ++pos) {
        if (pos >= text.size() || (static_cast<unsigned char>(text[pos]) & 0xC0) != 0x80)
            return std::nullopt;
        value = (value << 6) | (static_cast<unsigned char>(text[pos]) & 0x3Fu);
    }
    if (value < lead->smallest || value > 0x10FFFF || (value >= 0xD800 && value <= 0xDFFF))
        return std::nullopt;
    return value;
}

std::string codePointName(char32_t c) {
    char buffer[16];
    std::snprintf(buffer, sizeof buffer, "U+%04X", static_cast<unsigned>(c));
    return buffer;
}

void checkCharacters(const std::string& label, std::string_view value, Warnings& w) {
    for (std::size_t pos = 0; pos < value.size();) {
        const auto c = decodeOne(value, pos);
        if (!c) {
            w.push_back("Zeichensatz: " + label + " ist kein gültiges UTF-8");
            return;
        }
        if (!isPermittedCharacter(*c)) {
            w.push_back("Zeichensatz: unzulässiges Zeichen " + codePointName(*c) + " in " + label);
            return;
        }
    }
}

using LabelledElements = std::vector<std::pair<std::string, std::string_view>>;

LabelledElements addressElements(const Address& a, std::string_view who) {
    const std::string prefix = std::string(who) + " ";
    const bool combined = a.type == "K";
    return {{prefix + "Adresstyp", a.type},
            {prefix + "Name", a.name},
            {prefix + (combined ? "Adresszeile 1" : "Strasse"), a.streetOrLine1},
            {prefix + (combined ? "Adresszeile 2" : "Hausnummer"), a.houseNumberOrLine2},
            {prefix + "PLZ", a.postcode},
            {prefix + "Ort", a.town},
            {prefix + "Land", a.country}};
}

// Every element with a label for the user, in payload order.
LabelledElements labelledElements(const SwissPayload& p) {
    LabelledElements all{
        {"QR-Typ", p.qrType}, {"Version", p.version}, {"Codierung", p.codingType}, {"IBAN", p.account}};
    const auto append = [&all](const LabelledElements& more) {
        all.insert(all.end(), more.begin(), more.end());
    };
    append(addressElements(p.creditor, Creditor));
    append(addressElements(p.ultimateCreditor, "Endgültiger Zahlungsempfänger"));
    append({{"Betrag", p.amount}, {"Währung", p.currency}});
    append(addressElements(p.ultimateDebtor, Debtor));
    append({{"Referenztyp", p.referenceType},
            {"Referenz", p.reference},
            {"Mitteilung", p.unstructuredMessage},
            {"Abschluss", p.trailer}});
    if (p.billingInformation)
        all.emplace_back("Rechnungsinformationen", *p.billingInformation);
    for (const auto& procedure : p.alternativeProcedures)
        all.emplace_back("Alternatives Verfahren", procedure);
    return all;
}

void checkField(Warnings& w, std::string_view who, std::string_view field, std::string_view value,
                std::size_t maximum, bool required) {
    const std::string subject = std::string(who) + ": " + std::string(field);
    if (value.empty()) {
        if (required)
            w.push_back(subject + " fehlt");
        return;
    }
    if (characterCount(value) > maximum)
        w.push_back(subject + " länger als " + std::to_string(maximum) + " Zeichen");
}

void checkCountry(std::string_view country, std::string_view who, Warnings& w) {
    const bool twoLetters = country.size() == 2 && std::all_of(country.begin(), country.end(),
                                                               [](char c) { return c >= 'A' && c <= 'Z'; });
    if (country.empty())
        w.push_back(std::string(who) + ": Land fehlt");
    else if (!twoLetters)
        w.push_back(std::string(who) + ": Land als zweistelliger Ländercode erwartet (z.B. CH)");
    else if (!isCountryCode(country))
        w.push_back(std::string(who) + ": Land " + std::string(country) +
                    " ist kein Ländercode nach ISO 3166-1");
}

void checkStructuredAddress(const Address& a, std::string_view who, Warnings& w) {
    checkField(w, who, "Strasse", a.streetOrLine1, 70, false);
    checkField(w, who, "Hausnummer", a.houseNumberOrLine2, 16, false);
    checkField(w, who, "PLZ", a.postcode, 16, true);
    checkField(w, who, "Ort", a.town, 35, true);
}

void checkCombinedAddress(const Address& a, std::string_view who, Warnings& w) {
    w.push_back(std::string(who) +
                ": kombinierte Adresse (K) nehmen die Banken seit November 2025 nicht mehr "
                "an; strukturierte Adresse (S) verwenden");
    checkField(w, who, "Adresszeile 1", a.streetOrLine1, 70, false);
    checkField(w, who, "Adresszeile 2", a.houseNumberOrLine2, 70, true);
    if (!a.postcode.empty() || !a.town.empty())
        w.push_back(std::string(who) + ": bei kombinierter Adresse (K) bleiben PLZ und Ort leer");
}

// An optional party that is left out entirely is fine; once any of its fields is given, it must
// be complete. A bare address type (our payload writes "S" even for a client without address)
// gets one warning instead of one per missing field.
void checkAddress(const Address& a, std::string_view who, bool required, Warnings& w) {
    if (!required && a.empty())
        return;
    if (!required && Address{a.type, {}, {}, {}, {}, {}, {}} == a) {
        w.push_back(std::string(who) + ": Adresstyp ohne Adresse (ganz leer lassen oder Adresse angeben)");
        return;
    }
    checkField(w, who, "Name", a.name, 70, true);
    if (a.type == "S")
        checkStructuredAddress(a, who, w);
    else if (a.type == "K")
        checkCombinedAddress(a, who, w);
    else
        w.push_back(std::string(who) + ": Adresstyp S oder K erwartet");
    checkCountry(a.country, who, w);
}

bool isUsableIban(std::string_view iban) {
    return iban.size() == 21 && (iban.starts_with("CH") || iban.starts_with("LI")) &&
           std::all_of(iban.begin(), iban.end(), isUpperOrDigit) && hasValidIbanCheckDigits(iban);
}

void checkAccount(std::string_view iban, Warnings& w) {
    if (iban.empty()) {
        w.push_back("IBAN: fehlt");
    } else if (!std::all_of(iban.begin(), iban.end(), isUpperOrDigit)) {
        w.push_back("IBAN: nur Grossbuchstaben und Ziffern, ohne Leerzeichen");
    } else if (!iban.starts_with("CH") && !iban.starts_with("LI")) {
        w.push_back("IBAN: nur Konten in der Schweiz (CH) oder in Liechtenstein (LI)");
    } else if (iban.size() != 21) {
        w.push_back("IBAN: muss 21 Zeichen lang sein");
    } else if (!hasValidIbanCheckDigits(iban)) {
        w.push_back("IBAN: Prüfziffer falsch");
    }
}

// Digits, a point and two decimals, without leading zeros.
bool hasAmountForm(std::string_view amount) {
    const auto point = amount.find('.');
    if (point == std::string_view::npos || point == 0 || amount.size() - point != 3)
        return false;
    const auto whole = amount.substr(0, point);
    const auto cents = amount.substr(point + 1);
    return std::all_of(whole.begin(), whole.end(), isDigit) &&
           std::all_of(cents.begin(), cents.end(), isDigit) && (whole.size() == 1 || whole.front() != '0');
}

// 0.00 is accepted: it marks a bill that only notifies (e.g. "DO NOT USE FOR PAYMENT").
void checkAmount(std::string_view amount, Warnings& w) {
    if (amount.empty())
        return;
    if (!hasAmountForm(amount))
        w.push_back("Betrag: Zahl mit Punkt und zwei Nachkommastellen erwartet (z.B. 1234.50)");
    else if (amount.find('.') > 9)
        w.push_back("Betrag: höchstens 999999999.99");
}

void checkCurrency(std::string_view currency, Warnings& w) {
    if (currency != "CHF" && currency != "EUR")
        w.push_back("Währung: CHF oder EUR erwartet");
}

void checkQrReference(const SwissPayload& p, Warnings& w) {
    if (isUsableIban(p.account) && !isQrIban(p.account))
        w.push_back("QR-Referenz (QRR) nur mit einer QR-IBAN");
    const auto& ref = p.reference;
    if (ref.empty())
        w.push_back("Referenz: QR-Referenz fehlt");
    else if (ref.size() != 27 || !std::all_of(ref.begin(), ref.end(), isDigit))
        w.push_back("Referenz: QR-Referenz muss aus 27 Ziffern bestehen");
    else if (!isValidQrReference(ref))
        w.push_back("Referenz: Prüfziffer der QR-Referenz falsch");
}

void checkOtherReference(const SwissPayload& p, Warnings& w) {
    if (isQrIban(p.account))
        w.push_back("QR-IBAN verlangt eine QR-Referenz (QRR)");
    if (p.referenceType == "SCOR" && !isValidCreditorReference(p.reference))
        w.push_back("Referenz: keine gültige Creditor Reference (RF mit Prüfziffern, ISO 11649)");
    if (p.referenceType == "NON" && !p.reference.empty())
        w.push_back("Referenz: muss beim Referenztyp NON leer sein");
}

void checkReference(const SwissPayload& p, Warnings& w) {
    if (p.referenceType == "QRR")
        checkQrReference(p, w);
    else if (p.referenceType == "SCOR" || p.referenceType == "NON")
        checkOtherReference(p, w);
    else
        w.push_back("Referenztyp: QRR, SCOR oder NON erwartet");
}

void checkAdditionalInformation(const SwissPayload& p, Warnings& w) {
    const std::size_t length =
        characterCount(p.unstructuredMessage) + characterCount(p.billingInformation.value_or(""));
    if (length > QRBillValidator::MaxAdditionalInformation)
        w.push_back("Mitteilung: Mitteilung und Rechnungsinformationen zusammen länger als 140 Zeichen");
    if (p.trailer != "EPD")
        w.push_back("Abschluss: \"EPD\" erwartet");
}

void checkAlternativeProcedures(const std::vector<std::string>& procedures, Warnings& w) {
    if (procedures.size() > 2)
        w.push_back("Alternative Verfahren: höchstens zwei");
    if (std::any_of(procedures.begin(), procedures.end(),
                    [](const auto& p) { return characterCount(p) > 100; }))
        w.push_back("Alternative Verfahren: je höchstens 100 Zeichen");
}

// The QR code holds 997 bytes; beyond ASCII a character takes two or three of them.
void checkPayloadLength(std::size_t characters, std::size_t bytes, Warnings& w) {
    if (characters > QRBillValidator::MaxPayloadCharacters)
        w.push_back("Aufbau: Inhalt länger als 997 Zeichen");
    else if (bytes > QRBillValidator::MaxPayloadBytes)
        w.push_back("Aufbau: Inhalt länger als 997 Bytes (UTF-8), zu lang für den QR-Code");
}

Warnings elementWarnings(const SwissPayload& p) {
    Warnings w = headerProblems(p.qrType, p.version, p.codingType);
    checkAccount(p.account, w);
    checkAddress(p.creditor, Creditor, true, w);
    if (!p.ultimateCreditor.empty())
        w.push_back("Endgültiger Zahlungsempfänger: muss leer bleiben");
    checkAmount(p.amount, w);
    checkCurrency(p.currency, w);
    checkAddress(p.ultimateDebtor, Debtor, false, w);
    checkReference(p, w);
    checkAdditionalInformation(p, w);
    checkAlternativeProcedures(p.alternativeProcedures, w);
    for (const auto& [label, value] : labelledElements(p))
        checkCharacters(label, value, w);
    return w;
}

// Characters or bytes, by `count`.
std::size_t shortestTextLength(const SwissPayload& p, std::size_t (*count)(std::string_view)) {
    const auto elements = labelledElements(p);
    std::size_t length = elements.size() - 1;
    for (const auto& element : elements)
        length += count(element.second);
    // Alternative procedures cannot follow without the billing element in front of them.
    if (!p.billingInformation && !p.alternativeProcedures.empty())
        ++length;
    return length;
}

std::size_t byteCount(std::string_view utf8) {
    return utf8.size();
}

// The payment part prints an empty amount box for the payer to fill wherever the amount is not
// above zero, while the code carries the amount as given.
bool printsEmptyAmountForZero(std::string_view amount) {
    return !amount.empty() && std::all_of(amount.begin(), amount.end(), [](char c) {
        return c == '0' || c == '.' || c == '\'';
    }) && amount.find('0') != std::string_view::npos;
}

} // namespace

std::vector<std::string> QRBillValidator::validate(const SwissPayload& payload) {
    Warnings w = elementWarnings(payload);
    checkPayloadLength(shortestTextLength(payload, characterCount), shortestTextLength(payload, byteCount),
                       w);
    return w;
}

std::vector<std::string> QRBillValidator::validate(std::string_view payloadText) {
    Warnings w;
    if (const auto payload = SwissPayload::parse(payloadText, &w))
        w = elementWarnings(*payload);
    checkPayloadLength(characterCount(payloadText), payloadText.size(), w);
    return w;
}

std::vector<std::string> QRBillValidator::validatePrinted(std::string_view payloadText) {
    Warnings w = validate(payloadText);
    const auto payload = SwissPayload::parse(payloadText, nullptr);
    if (payload && printsEmptyAmountForZero(payload->amount))
        w.push_back("Betrag: der QR-Code trägt " + payload->amount +
                    ", der Zahlteil zeigt aber das leere Betragsfeld; Betrag angeben oder leer lassen");
    return w;
}

} // namespace wordbm
