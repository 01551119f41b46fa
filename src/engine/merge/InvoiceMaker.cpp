#include "engine/merge/InvoiceMaker.h"

#include "engine/merge/BookmarkFiller.h"
#include "engine/merge/PreparedForms.h"
#include "engine/merge/PrintTurns.h"
#include "engine/word/Application.h"
#include "engine/word/AutomationError.h"
#include "engine/word/Document.h"
#include "engine/word/Documents.h"
#include "engine/word/WordConstants.h"
#include "support/AtomicFile.h"
#include "support/SystemErrorText.h"

#include <chrono>
#include <exception>
#include <filesystem>
#include <system_error>
#include <thread>

namespace wordbm {

namespace fs = std::filesystem;

namespace {

constexpr const char* CrLf = "\r\n";
constexpr const char* NotSaved = "Die Rechnung wurde nicht gespeichert!";
constexpr const char* NoPdf = "Die PDF-Datei wurde nicht generiert!";
constexpr const char* NotDeleted = "Die Rechnung konnte nicht gelöscht werden!";
constexpr auto PrintPause = std::chrono::milliseconds(5);

// The old file goes first, so a failed export cannot leave an earlier invoice under the new name.
void removeQuietly(const std::string& path) {
    std::error_code ignored;
    fs::remove(path, ignored);
}

std::string describe(const std::error_code& error) {
    if (error == std::errc::no_such_file_or_directory) {
        return "Datei nicht gefunden";
    }
    if (error == std::errc::permission_denied || error == std::errc::operation_not_permitted) {
        return "Zugriff verweigert";
    }
    return SystemErrorText::of(error);
}

word::Document& open(const word::DocumentPtr& doc) {
    if (!doc) {
        throw AutomationError("Das Dokument ist nicht mehr geöffnet.");
    }
    return *doc;
}

} // namespace

InvoiceMaker::InvoiceMaker(word::Application& word, const std::string& workingForm,
                           const MergeChoices& choices, BookmarkFiller& filler, Hooks hooks)
    : word_(word), workingForm_(workingForm), choices_(choices), filler_(filler), hooks_(std::move(hooks)) {}

std::string InvoiceMaker::pdfPathOf(const std::string& path) {
    return fs::path(path).replace_extension(".pdf").string();
}

InvoiceOutcome InvoiceMaker::make(word::DocumentPtr& doc, const MergeJob& job, bool fill) {
    InvoiceOutcome outcome;
    // The working form stays open as it is: the next invoice starts from it without reopening.
    if (fill && doc && hooks_.prepared && makePrepared(job, outcome)) {
        if (choices_.PDF || choices_.Print) {
            fromSavedInvoice(job, outcome);
        }
        if (choices_.Delete) {
            remove(job.path, outcome);
        }
        return outcome;
    }
    if (fill && doc) {
        for (std::string& problem : filler_.fill(word_, *doc, job.row)) {
            outcome.notes.push_back("    " + std::move(problem));
            outcome.failed = true;
        }
    }
    const bool saved = save(doc, job.path, outcome);
    if (choices_.PDF) {
        exportPdf(doc, job.path, outcome);
    }
    if (choices_.Print) {
        print(doc, job, outcome);
    }
    if (choices_.Close || choices_.Delete) {
        try {
            open(doc).Close();
        } catch (const std::exception&) {
            // Closed already: nothing is lost.
        }
    }
    if (choices_.Delete) {
        remove(job.path, outcome);
    }
    reopen(doc, saved);
    return outcome;
}

bool InvoiceMaker::makePrepared(const MergeJob& job, InvoiceOutcome& outcome) {
    const PreparedForm* form = hooks_.prepared->formFor(filler_, job.row);
    const std::optional<std::string> invoice = form ? form->invoiceOf(filler_, job.row) : std::nullopt;
    if (!invoice) {
        return false;
    }
    removeQuietly(job.path);
    AtomicFile file(job.path);
    std::error_code error = file.open();
    if (!error) {
        error = file.write(*invoice);
    }
    if (!error) {
        // The run flushes its folders once at its end.
        error = file.commit(false);
    }
    if (error) {
        fail(outcome,
             "Das Dokument kann nicht gespeichert werden: " + job.path + " (" + describe(error) + ").",
             NotSaved);
    }
    return true;
}

void InvoiceMaker::fromSavedInvoice(const MergeJob& job, InvoiceOutcome& outcome) {
    word::DocumentPtr invoice;
    // Only a save can have failed so far, and without the saved invoice there is nothing to export.
    std::string problem = outcome.failed ? "Die Rechnung ist nicht gespeichert." : "";
    if (!outcome.failed) {
        try {
            invoice = word_.Documents()->Open(job.path);
        } catch (const std::exception& failure) {
            problem = failure.what();
        }
    }
    if (!invoice) {
        if (choices_.PDF) {
            fail(outcome, problem, NoPdf);
        }
        if (choices_.Print) {
            outcome.notes.push_back("    Nicht gedruckt: " + problem);
            outcome.failed = true;
        }
        return;
    }
    if (choices_.PDF) {
        exportPdf(invoice, job.path, outcome);
    }
    if (choices_.Print) {
        print(invoice, job, outcome);
    }
    try {
        invoice->Close(word::wd::wdDoNotSaveChanges);
    } catch (const std::exception&) {
        // Closed already: nothing is lost.
    }
}

bool InvoiceMaker::save(word::DocumentPtr& doc, const std::string& path, InvoiceOutcome& outcome) {
    removeQuietly(path);
    try {
        open(doc).SaveAs2(path);
        return true;
    } catch (const std::exception& failure) {
        fail(outcome, failure.what(), NotSaved);
        return false;
    }
}

void InvoiceMaker::exportPdf(word::DocumentPtr& doc, const std::string& path, InvoiceOutcome& outcome) {
    const std::string pdf = pdfPathOf(path);
    removeQuietly(pdf);
    try {
        open(doc).ExportAsFixedFormat(pdf, word::wd::wdExportFormatPDF, choices_.PDFA);
        outcome.pdfWritten = true;
    } catch (const std::exception& failure) {
        fail(outcome, failure.what(), NoPdf);
    }
}

void InvoiceMaker::print(word::DocumentPtr& doc, const MergeJob& job, InvoiceOutcome& outcome) {
    letEventsRun();
    if (hooks_.printTurns) {
        hooks_.printTurns->wait(job.sequence);
    }
    try {
        open(doc).PrintOut();
    } catch (const std::exception& failure) {
        // No message belongs to a failed print, but an invoice that never reached the printer
        // must not pass unnoticed.
        outcome.notes.push_back(std::string("    Nicht gedruckt: ") + failure.what());
        outcome.failed = true;
    }
    letEventsRun();
    std::this_thread::sleep_for(PrintPause);
    if (hooks_.printTurns) {
        hooks_.printTurns->done(job.sequence);
    }
    letEventsRun();
}

void InvoiceMaker::remove(const std::string& path, InvoiceOutcome& outcome) {
    std::error_code error;
    if (!fs::remove(path, error) && !error) {
        error = std::make_error_code(std::errc::no_such_file_or_directory);
    }
    if (error) {
        fail(outcome, describe(error), NotDeleted);
    }
}

void InvoiceMaker::reopen(word::DocumentPtr& doc, bool saved) {
    if (!saved && doc) {
        // An unsaved document is still the working form, filled; opened "again" it would be
        // handed back as it is, and the next invoice would start from this one's values.
        try {
            doc->Close(word::wd::wdDoNotSaveChanges);
        } catch (const std::exception&) {
            // A document that will not close is let go of; the form is opened afresh below.
        }
    }
    try {
        doc = word_.Documents()->Open(workingForm_);
    } catch (const std::exception&) {
        // The next invoice reports the missing document when it tries to save.
        doc.reset();
    }
}

void InvoiceMaker::fail(InvoiceOutcome& outcome, const std::string& description,
                        const std::string& consequence) {
    outcome.failed = true;
    const std::string message = description + CrLf + consequence;
    if (hooks_.report) {
        hooks_.report(message);
    } else {
        outcome.messages.push_back(message);
    }
}

void InvoiceMaker::letEventsRun() {
    if (hooks_.letEventsRun) {
        hooks_.letEventsRun();
    }
}

} // namespace wordbm
