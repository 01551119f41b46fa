#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace wordbm {

class CSVfile;

// The Swiss QR-bill data of one invoice row of the control file: the payload of the QR code and
// the texts printed beside it. Holds no state between calls; every member takes the data line.
// The payload writes a fixed subset of the standard: structured addresses, CHF, reference type
// QRR, no alternative procedures, whatever the row holds.
class QRCoder {
public:
    explicit QRCoder(CSVfile& data) : data_(data) {}

    // The payload as UTF-8 bytes: LF between elements, CR LF inside the address groups.
    std::string QRText(std::int32_t row) const;

    // The text of an export field in the row; "" when the field or the row is missing.
    std::string Value(std::int32_t row, std::string_view field) const;

    std::string Receiver(std::int32_t row) const;      // five CR LF: the empty address
    std::string ReceiverFinal(std::int32_t row) const; // the creditor's six fields and a closing CR LF
    std::string ReceiverBlock(std::int32_t row) const;
    std::string Amount(std::int32_t row) const; // francs "  .  " rappen
    std::string Sender(std::int32_t row) const; // the debtor's six fields
    std::string Ccy(std::int32_t row) const;
    std::string IBAN(std::int32_t row) const;
    std::string KontoAn(std::int32_t row) const;
    std::string KontoVon(std::int32_t row) const;
    std::string Referenz(std::int32_t row) const;
    std::string Waehrung(std::int32_t row) const;
    std::string Betrag(std::int32_t row) const; // "# ##0.00", or "" when not a positive number
    std::string Zusatz(std::int32_t row) const;
    std::string Info(std::int32_t row) const;

    // Appends the trimmed line behind CR LF; a blank line adds nothing.
    static void AddLine(std::string& text, std::string_view line);

    // "# ##0.00" with "." as decimal sign: one blank before the last three digits of the francs.
    static std::string formatPrintedAmount(std::string_view exported);

private:
    std::string addressOf(std::int32_t row, std::string_view prefix, bool block) const;

    CSVfile& data_;
};

} // namespace wordbm
