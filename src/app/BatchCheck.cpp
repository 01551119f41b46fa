#include "app/BatchCheck.h"

#include "data/CSVfile.h"
#include "data/ControlFileHints.h"
#include "qrbill/QRBillValidator.h"
#include "qrbill/QRCoder.h"
#include "qrbill/QRImage.h"
#include "support/FileOps.h"

#include <ostream>

namespace wordbm {
namespace {

constexpr int ExitFine = 0;
constexpr int ExitWarnings = 1;
constexpr int ExitUnusable = 2;

std::string rowLabel(CSVfile& data, std::int32_t row) {
    std::string label = "Zeile " + std::to_string(row);
    const auto number = data.FieldStr("RgNummer", row);
    const auto client = data.FieldStr("KliName", row);
    if (!number.empty()) {
        label += ", Rechnung " + number;
    }
    if (!client.empty()) {
        label += ", " + client;
    }
    return label;
}

} // namespace

bool BatchCheck::load(const std::string& csvPath, CSVfile& data) {
    if (const auto problem = FileOpenCheck(csvPath); !problem.empty()) {
        err_ << problem << '\n';
        return false;
    }
    data.ReadFile(csvPath);
    for (const auto& hint : ControlFileHints::ofFile(csvPath)) {
        err_ << hint << '\n';
    }
    if (data.LineCount() < 1) {
        err_ << csvPath << "\n" << ControlFileHints::NoInvoices << '\n';
        return false;
    }
    return true;
}

int BatchCheck::check(const std::string& csvPath) {
    CSVfile data;
    if (!load(csvPath, data)) {
        return ExitUnusable;
    }
    const QRCoder coder(data);
    int invoices = 0;
    int withWarnings = 0;
    std::size_t warnings = 0;
    for (std::int32_t row = 1; row <= data.LineCount(); ++row) {
        if (data.FieldStr("RgDatum", row).empty()) {
            continue;
        }
        ++invoices;
        const auto found = QRBillValidator::validatePrinted(coder.QRText(row));
        if (found.empty()) {
            continue;
        }
        ++withWarnings;
        warnings += found.size();
        out_ << rowLabel(data, row) << ":\n";
        for (const auto& warning : found) {
            out_ << "  - " << warning << '\n';
        }
    }
    // A binary file or a header alone checks nothing: that is no passed check.
    if (invoices == 0) {
        err_ << csvPath << "\n" << ControlFileHints::NoInvoices << '\n';
        return ExitUnusable;
    }
    out_ << invoices << (invoices == 1 ? " Rechnung" : " Rechnungen") << " geprüft, " << withWarnings
         << " mit Warnungen (" << warnings << (warnings == 1 ? " Warnung" : " Warnungen") << ").\n";
    return withWarnings == 0 ? ExitFine : ExitWarnings;
}

int BatchCheck::qrcode(const std::string& csvPath, std::int32_t row, const std::string& pngPath,
                       bool printText) {
    CSVfile data;
    if (!load(csvPath, data)) {
        return ExitUnusable;
    }
    if (row < 1 || row > data.LineCount()) {
        err_ << "Zeile " << row << " gibt es nicht: die Steuerdatei hat " << data.LineCount() << " Zeilen.\n";
        return ExitUnusable;
    }
    const auto payload = QRCoder(data).QRText(row);
    if (!pngPath.empty()) {
        QRImage image;
        if (!image.Encode(payload)) {
            err_ << image.lastError() << '\n';
            return ExitUnusable;
        }
        const auto& png = image.png();
        const auto problem =
            writeFileAtomic(pngPath, std::string_view(reinterpret_cast<const char*>(png.data()), png.size()));
        if (!problem.empty()) {
            err_ << problem << '\n';
            return ExitUnusable;
        }
    }
    if (printText) {
        out_.write(payload.data(), static_cast<std::streamsize>(payload.size()));
        out_.flush();
    }
    return ExitFine;
}

} // namespace wordbm
