#pragma once

#include "engine/merge/BookmarkFiller.h"
#include "engine/merge/InvoiceOutcome.h"
#include "engine/merge/MergeJob.h"
#include "engine/merge/OutputNames.h"
#include "engine/ports/MergeChoices.h"
#include "engine/ports/ResultList.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <future>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace wordbm {

class InvoiceMaker;
class MergeSession;
class MergeWorkers;
class PreparedForms;

// One merge or test run of the engine: for every invoice row of the control file the name from
// the mask, its folder, the invoice itself (made here on the session's document, or by worker
// threads on copies of the form) and the lines of the result list, kept in row order.
class MergeRun {
public:
    // Choices as the merge dialog returned them; a test run takes none.
    MergeRun(MergeSession& session, const MergeChoices& choices, bool testOnly);
    ~MergeRun();
    MergeRun(const MergeRun&) = delete;
    MergeRun& operator=(const MergeRun&) = delete;

    // Runs every row, then shows the result list and returns it.
    ResultList run();

    // Result lines beyond the ones for each invoice.
    static constexpr const char* MissingPath = "**Pfad nicht gefunden->";
    static constexpr const char* NameTaken = "**Dateiname schon vergeben, nicht gespeichert->";
    static constexpr const char* QRWarning = "    QR-Rechnung: ";
    static constexpr const char* Stopped = "**Abgebrochen vor Zeile ";
    static constexpr const char* CodeProblem = "    QR-Code: ";
    static constexpr const char* NotFlushed = "**Nicht auf die Festplatte geschrieben: ";

private:
    // A row on its way into the result list; its invoice may still be in the making.
    struct Entry {
        std::int32_t row = 0;
        std::vector<std::string> lines;
        bool error = false;
        std::optional<std::size_t> job; // sequence number of its invoice
        std::string pdf;                // where its PDF goes, when one is made
        // Reads the QR code back from the finished PDF beside the run; empty when it matches.
        std::future<std::string> proof;
    };

    // The mask's paths, the reserved names, and who makes the invoices.
    void prepare();
    void walkRows();
    // Ends the session when chosen, shows the result list and returns it.
    ResultList finish();
    // Whether the form carries QR-bill data, and whether it carries a QR code.
    void inspectForm();
    // The form made ready once for invoices that are only saved; null when it cannot be.
    void prepareForm();
    // The row's name, folder and warnings; `job` receives the invoice to make, if any.
    Entry plan(std::int32_t row, std::optional<MergeJob>& job);
    // Makes the invoice here, or hands it to the threads once they have room; false when the
    // person stopped the run meanwhile.
    bool submit(Entry& entry, MergeJob job);
    // Ends the run before `row`: invoices not begun are dropped.
    void halt(std::int32_t row);
    // Moves finished entries, in row order, into the result; waits up to `wait` for the first one.
    void deliver(int waitMilliseconds);
    void deliverAll();
    // Invoices joined from the prepared form are written without a flush each; this is theirs.
    void flushFolders();
    void record(Entry& entry, const InvoiceOutcome& outcome);
    // Starts reading the PDF's QR code back, away from the threads that make the invoices.
    void prove(Entry& entry);
    // False while the entry's code is still being read, after waiting up to `wait`.
    bool proven(Entry& entry, std::chrono::milliseconds wait);
    void add(Entry& entry);
    // "Rechnung 7 von 24" and the customer of the row, for the progress display.
    std::string progressText(const Entry& entry) const;
    bool stopRequested();

    MergeSession& session_;
    MergeChoices choices_;
    bool testOnly_;
    bool checkQR_ = false;
    bool proveCodes_ = false;
    std::int32_t lineCount_ = 0;
    std::int32_t invoiceCount_ = 0;
    OutputNames names_;
    std::size_t jobs_ = 0;
    bool stopped_ = false;
    std::int32_t stopRow_ = 0;

    std::unique_ptr<PreparedForms> prepared_;
    std::set<std::string> savedFolders_;
    std::unique_ptr<BookmarkFiller> filler_;
    std::unique_ptr<InvoiceMaker> maker_;
    std::unique_ptr<MergeWorkers> workers_;
    std::deque<Entry> pending_;
    ResultList result_;
};

} // namespace wordbm
