#pragma once

#include <string>
#include <vector>

namespace wordbm {

// Reads back the QR codes an invoice's PDF carries, as a phone at the counter would: where the
// payment part puts its code, each page is rendered in grey and searched for QR codes. Only when
// none is found there are the whole pages searched, for forms that place the code elsewhere.
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
    // Where the payment part puts its code, with room around it: the lowest 112 mm of the page
    // (the part's height, the 2 mm it stands above the standard's place, a margin for a form that
    // places it higher still), from 55 to 125 mm across (the code lies at 67 to 113 mm).
    static constexpr double FootMm = 112;
    static constexpr double CodeLeftMm = 55;
    static constexpr double CodeRightMm = 125;

    static constexpr const char* NoCode = "QR-Code im PDF nicht lesbar";
    static constexpr const char* OtherCode = "QR-Code im PDF weicht von den Rechnungsdaten ab";
};

} // namespace wordbm
