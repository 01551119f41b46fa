#pragma once

#include "engine/merge/InvoiceOutcome.h"
#include "engine/merge/MergeJob.h"
#include "engine/ports/MergeChoices.h"
#include "engine/word/Forward.h"

#include <functional>
#include <string>

namespace wordbm {

class BookmarkFiller;
class PreparedForms;
class PrintTurns;

// Makes one invoice after another from the working form open in one word processor: fill, save
// under the invoice's name, PDF, print, close, delete, and the working form opened again for the
// next one. Every step is guarded; a failure is reported and the invoice goes on with the next step.
class InvoiceMaker {
public:
    // Shows a failure message at once; when empty, messages are kept in the outcome instead.
    using Report = std::function<void(const std::string&)>;

    struct Hooks {
        Report report;
        // Lets window events run around printing; may be empty.
        std::function<void()> letEventsRun;
        // Invoices made side by side wait here for their turn at the printer; may be null.
        PrintTurns* printTurns = nullptr;
        // The form made ready for this run's invoices, shared by the run's threads; may be null.
        // Only for invoices that are closed (or deleted) once made: their PDF and print are made
        // from the saved file.
        const PreparedForms* prepared = nullptr;
    };

    // All arguments are borrowed and must outlive the maker.
    InvoiceMaker(word::Application& word, const std::string& workingForm, const MergeChoices& choices,
                 BookmarkFiller& filler, Hooks hooks);

    // `doc` is the working form on entry (null when it is gone) and the reopened one on return.
    // Without `fill` the document is saved as it is, as when it could not be checked.
    InvoiceOutcome make(word::DocumentPtr& doc, const MergeJob& job, bool fill = true);

    // "name.docx" -> "name.pdf"; a dot in a folder name is no extension.
    static std::string pdfPathOf(const std::string& path);

private:
    // The invoice from the prepared form; false when its texts need the word processor.
    bool makePrepared(const MergeJob& job, InvoiceOutcome& outcome);
    // PDF and print of an invoice joined from the prepared form, read back from its file.
    void fromSavedInvoice(const MergeJob& job, InvoiceOutcome& outcome);
    bool save(word::DocumentPtr& doc, const std::string& path, InvoiceOutcome& outcome);
    void exportPdf(word::DocumentPtr& doc, const std::string& path, InvoiceOutcome& outcome);
    void print(word::DocumentPtr& doc, const MergeJob& job, InvoiceOutcome& outcome);
    void remove(const std::string& path, InvoiceOutcome& outcome);
    void reopen(word::DocumentPtr& doc, bool saved);
    void fail(InvoiceOutcome& outcome, const std::string& description, const std::string& consequence);
    void letEventsRun();

    word::Application& word_;
    const std::string& workingForm_;
    const MergeChoices& choices_;
    BookmarkFiller& filler_;
    Hooks hooks_;
};

} // namespace wordbm
