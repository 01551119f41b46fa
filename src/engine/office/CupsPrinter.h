#pragma once

#include <string>

namespace wordbm::office {

// Printing of finished PDFs through CUPS, on the server that the CUPS client settings name
// (client.conf, $CUPS_SERVER).
class CupsPrinter {
public:
    // Prints a PDF on the named CUPS queue ("queue" or "queue/instance"), or on the default
    // destination: $WORDBM_PRINTER when set, else the CUPS default. The job title defaults to the
    // file name. Throws AutomationError with a German description.
    static void print(const std::string& pdfPath, const std::string& printerName = {},
                      const std::string& title = {});

    // The queue that print() takes when none is named; empty when there is none.
    static std::string defaultPrinter();
};

} // namespace wordbm::office
