#include "app/BatchSlip.h"

#include "app/TerminalUserInterface.h"
#include "engine/ooxml/DocxApplication.h"
#include "engine/slip/modESQR.h"
#include "engine/word/Document.h"
#include "engine/word/Documents.h"
#include "qrbill/QRImage.h"
#include "support/FileOps.h"

#include <exception>
#include <ostream>

namespace wordbm {

int BatchSlip::insert(const std::string& formPath, const std::string& outPath, const SlipChoices& choices) {
    if (!fileExists(formPath)) {
        err_ << formPath << ": Datei nicht gefunden!\n";
        return 2;
    }
    const auto word = ooxml::DocxApplication::create();
    try {
        const word::DocumentPtr doc = word->Documents()->Open(formPath);
        TerminalUserInterface ui(out_, err_, TerminalUserInterface::Policy{});
        QRImage qrImage;
        modESQR slip(ui, qrImage);
        // A form opened afresh has its cursor at the start of the text: the slip goes to page 1.
        slip.Build(*word, *doc, choices);
        doc->SaveAs2(outPath);
        word->Quit();
    } catch (const std::exception& failure) {
        err_ << formPath << ": " << failure.what() << "\n";
        return 2;
    }
    out_ << outPath << "\n";
    return 0;
}

} // namespace wordbm
