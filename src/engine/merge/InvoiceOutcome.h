#pragma once

#include <string>
#include <vector>

namespace wordbm {

// What became of one invoice of a merge run.
struct InvoiceOutcome {
    // Failure messages for a box, in the order they happened; empty when they were shown at once.
    std::vector<std::string> messages;
    // Lines for the result list below the invoice's own line.
    std::vector<std::string> notes;
    bool failed = false;
    // The invoice's PDF file was written; its QR code can be read back.
    bool pdfWritten = false;
};

} // namespace wordbm
