#pragma once

#include <string>
#include <vector>

namespace wordbm {

// Reads back the QR codes an invoice's PDF carries where the payment part lies, as a phone at the
// counter would: the foot of each page is rendered in grey and searched for QR codes. Only when
// no page's foot holds one are the whole pages searched, for forms that place the code elsewhere.
// Safe to use from several threads at once, each with its own files.
class PrintedCode {
public:
    struct Reading {
        // The bytes of every code found, page by page.
        std::vector<std::string> codes;
        // Set, in German, when the file is no readable PDF.
        std::string error;
    };

    static Reading read(const std::string& pdfPath);

    // Empty when a code of the PDF carries exactly `payload`; otherwise the German reason.
    static std::string verdict(const std::string& pdfPath, const std::string& payload);

    // Fine enough for a code of version 25 (117 modules over 46 mm: 3.1 pixels a module).
    static constexpr double Dpi = 200;
    // The payment part's height and the 2 mm it stands above the standard's place, plus a margin
    // for a form that places it a little higher still.
    static constexpr double FootMm = 112;

    static constexpr const char* NoCode = "QR-Code im PDF nicht lesbar";
    static constexpr const char* OtherCode = "QR-Code im PDF weicht von den Rechnungsdaten ab";
};

} // namespace wordbm
