#include "qrbill/QRCoder.h"

#include "data/CSVfile.h"
#include "qrbill/SplitAddress.h"
#include "support/Regional.h"
#include "support/Strings.h"

namespace wordbm {
namespace {

constexpr std::string_view CrLf = "\r\n";
constexpr char Lf = '\n';

std::string withoutChar(std::string_view text, char dropped) {
    std::string result;
    result.reserve(text.size());
    for (char c : text) {
        if (c != dropped) {
            result += c;
        }
    }
    return result;
}

// A line break inside a value (a quoted CR LF in the control file) would split a payload element in
// two and shift every element behind it; within a value it stands for a blank.
std::string oneLine(std::string_view text) {
    if (text.find_first_of("\r\n") == std::string_view::npos) {
        return std::string(text);
    }
    std::string result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool lineEnd = text[i] == '\r' || text[i] == '\n';
        if (!lineEnd) {
            result += text[i];
        } else if (i + 1 == text.size() || (text[i + 1] != '\r' && text[i + 1] != '\n')) {
            result += ' ';
        }
    }
    return std::string(trim(result));
}

// Two decimals, rounded half away from zero as the classic Format does.
std::string twoDecimals(Currency amount, std::string& francs) {
    std::int64_t cents = amount.scaled / 100;
    if (amount.scaled % 100 >= 50) {
        ++cents;
    }
    francs = std::to_string(cents / 100);
    return zeroPad(cents % 100, 2);
}

} // namespace

std::string QRCoder::Value(std::int32_t row, std::string_view field) const {
    return data_.FieldStr(field, row);
}

std::string QRCoder::addressOf(std::int32_t row, std::string_view prefix, bool block) const {
    AddressLines lines;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        lines[i] = oneLine(Value(row, std::string(prefix) + std::to_string(i + 1)));
    }
    return SplitAddress(lines, block);
}

std::string QRCoder::Receiver(std::int32_t) const {
    return SplitAddress(AddressLines{});
}

std::string QRCoder::ReceiverFinal(std::int32_t row) const {
    auto fields = addressOf(row, "BueroAdr", false);
    if (fields.empty()) {
        fields = Receiver(row);
    }
    return fields + std::string(CrLf);
}

std::string QRCoder::ReceiverBlock(std::int32_t row) const {
    return Receiver(row) + std::string(CrLf) + ReceiverFinal(row) + std::string(CrLf) + Value(row, "BankKto");
}

std::string QRCoder::Amount(std::int32_t row) const {
    return Value(row, "BesrBetTF") + "  .  " + Value(row, "BesrBetTR");
}

std::string QRCoder::Sender(std::int32_t row) const {
    return addressOf(row, "KliAdr", false);
}

std::string QRCoder::Ccy(std::int32_t) const {
    return "CHF";
}

std::string QRCoder::IBAN(std::int32_t row) const {
    return Value(row, "BankKto");
}

std::string QRCoder::KontoAn(std::int32_t row) const {
    auto text = IBAN(row);
    AddLine(text, addressOf(row, "BueroAdr", true));
    return text;
}

std::string QRCoder::KontoVon(std::int32_t row) const {
    std::string text;
    AddLine(text, addressOf(row, "KliAdr", true));
    return text;
}

std::string QRCoder::Referenz(std::int32_t row) const {
    return Value(row, "BesrRefNr");
}

std::string QRCoder::Waehrung(std::int32_t) const {
    return "CHF";
}

std::string QRCoder::Betrag(std::int32_t row) const {
    return formatPrintedAmount(Value(row, "BesrBet"));
}

std::string QRCoder::Zusatz(std::int32_t row) const {
    return Value(row, "Referenz");
}

std::string QRCoder::Info(std::int32_t) const {
    return {};
}

std::string QRCoder::QRText(std::int32_t row) const {
    std::string payload = "SPC";
    const auto element = [&payload](std::string_view text) {
        payload += Lf;
        payload += text;
    };
    element("0200");
    element("1");
    element(withoutChar(oneLine(Value(row, "BankKto")), ' '));
    element("S");
    // The closing CR LF of the creditor and the empty address behind it together make the
    // seven empty elements of the ultimate creditor.
    element(ReceiverFinal(row));
    element(Receiver(row));
    element(withoutChar(oneLine(Value(row, "BesrBet")), '\''));
    element("CHF");
    element("S");
    element(Sender(row));
    element("QRR");
    element(withoutChar(oneLine(Value(row, "BesrRefNr")), ' '));
    element(oneLine(Value(row, "Referenz")));
    element("EPD");
    // The QR component takes the bytes up to the first NUL.
    if (const auto nul = payload.find('\0'); nul != std::string::npos) {
        payload.resize(nul);
    }
    return payload;
}

void QRCoder::AddLine(std::string& text, std::string_view line) {
    const auto trimmed = trim(line);
    if (trimmed.empty()) {
        return;
    }
    if (!text.empty()) {
        text += CrLf;
    }
    text += trimmed;
}

std::string QRCoder::formatPrintedAmount(std::string_view exported) {
    if (!regional::isNumeric(exported)) {
        return {};
    }
    std::optional<Currency> amount;
    try {
        amount = regional::parseCurrency(exported);
    } catch (const std::exception&) {
        return {};
    }
    if (!amount || amount->scaled <= 0) {
        return {};
    }
    std::string francs;
    const auto rappen = twoDecimals(*amount, francs);
    if (francs.size() > 3) {
        francs.insert(francs.size() - 3, " ");
    }
    return francs + "." + rappen;
}

} // namespace wordbm
