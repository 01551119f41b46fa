#include "engine/merge/MergeRun.h"

#include "data/CSVfile.h"
#include "data/KnownFields.h"
#include "engine/merge/InvoiceMaker.h"
#include "engine/merge/MergeSession.h"
#include "engine/merge/MergeWorkers.h"
#include "engine/merge/PreparedForms.h"
#include "engine/ports/UserInterface.h"
#include "engine/word/Application.h"
#include "engine/word/Bookmarks.h"
#include "engine/word/Document.h"
#include "engine/word/WordConstants.h"
#include "names/FileNameTemplate.h"
#include "qrbill/PrintedCode.h"
#include "qrbill/QRBillValidator.h"
#include "qrbill/QRCoder.h"
#include "support/FileOps.h"
#include "support/Folders.h"
#include "support/Strings.h"

#include <algorithm>
#include <exception>
#include <filesystem>

namespace wordbm {

namespace {

constexpr int WaitForOutcome = 20; // milliseconds between two looks at the window

// The result list shows names without their extension; a dot in a folder name is none.
std::string withoutExtension(const std::string& name) {
    const auto dot = name.rfind('.');
    const auto separator = name.find_last_of("\\/");
    if (dot == std::string::npos || (separator != std::string::npos && dot < separator)) {
        return name;
    }
    return name.substr(0, dot);
}

} // namespace

MergeRun::MergeRun(MergeSession& session, const MergeChoices& choices, bool testOnly)
    : session_(session), choices_(choices), testOnly_(testOnly) {}

MergeRun::~MergeRun() = default;

void MergeRun::inspectForm() {
    try {
        const word::BookmarksPtr bookmarks = session_.Doc()->Bookmarks();
        const int count = bookmarks->Count();
        for (int i = 1; i <= count; ++i) {
            const std::string field = session_.Fields().BookmarkFieldGet(bookmarks->Item(i)->Name());
            checkQR_ =
                checkQR_ || BookmarkFiller::isQRField(field) || field.starts_with(BookmarkFiller::SlipPrefix);
            proveCodes_ = proveCodes_ || BookmarkFiller::isCodePicture(field);
        }
    } catch (const std::exception&) {
        // A form that cannot be read gets no QR warnings; its invoices fail on their own.
    }
}

ResultList MergeRun::run() {
    prepare();
    session_.UI().progressStart(testOnly_ ? "Dateinamen testen" : "Rechnungen erstellen", lineCount_);
    walkRows();
    deliverAll();
    flushFolders();
    session_.UI().progressStop();
    return finish();
}

void MergeRun::prepare() {
    MergeSession& s = session_;
    s.NameTemplate().WordPath(s.WordDoc());
    s.NameTemplate().CSVPath(s.CSVDoc());
    lineCount_ = std::max(s.CSV().LineCount(), 0);
    for (std::int32_t row = 1; row <= lineCount_; ++row) {
        invoiceCount_ += s.InvoiceRow(row) ? 1 : 0;
    }
    inspectForm();
    for (const std::string* input : {&s.WordDoc(), &s.WordWork(), &s.CSVDoc(), &s.CSVWork()}) {
        names_.reserve(nativePath(*input));
    }
    if (testOnly_) {
        return;
    }
    prepareForm();
    // A thread per invoice at most: each opens a copy of the form, and one invoice is made fastest
    // from the copy the session has open already.
    const int threads = static_cast<int>(std::min<std::int64_t>(s.MergeJobs(), invoiceCount_));
    if (threads > 1) {
        workers_ =
            std::make_unique<MergeWorkers>(threads,
                                           MergeWorkers::Setup{s.WordFactory(), s.WordWork(), choices_,
                                                               &s.Fields(), s.SlipBuilder(), prepared_.get()},
                                           s.CSV());
        return;
    }
    const auto letEventsRun = [&s] { s.UI().processEvents(); };
    filler_ = std::make_unique<BookmarkFiller>(s.Fields(), s.CSV(), s.Coder(), s.QRComponent(),
                                               s.SlipBuilder(), letEventsRun);
    const auto report = [&s](const std::string& text) { s.ShowFailure(text); };
    maker_ =
        std::make_unique<InvoiceMaker>(*s.Word(), s.WordWork(), choices_, *filler_,
                                       InvoiceMaker::Hooks{report, letEventsRun, nullptr, prepared_.get()});
}

void MergeRun::prepareForm() {
    // An invoice left open is a document of the word processor's, filled by it.
    const bool closed = choices_.Close || choices_.Delete;
    MergeSession& s = session_;
    if (!closed || lineCount_ < 1 || !s.WordFactory()) {
        return;
    }
    // The form is prepared from the working form's file. An edit not saved yet reaches the first
    // invoice through the word processor, as it always has, so such a run is not prepared.
    if (const word::DocumentPtr& open = s.OpenDoc(); open && !open->Saved()) {
        return;
    }
    try {
        const word::ApplicationPtr word = s.WordFactory()();
        if (!word) {
            return;
        }
        BookmarkFiller filler(s.Fields(), s.CSV(), s.Coder(), s.QRComponent(), s.SlipBuilder(), {});
        const std::string folder = std::filesystem::path(nativePath(s.WordWork())).parent_path().string();
        std::vector<std::int32_t> rows;
        for (std::int32_t row = 1; row <= lineCount_; ++row) {
            if (s.InvoiceRow(row)) {
                rows.push_back(row);
            }
        }
        prepared_ = PreparedForms::make(*word, s.WordWork(), s.Fields(), filler, folder, rows);
        word->Quit(word::wd::wdDoNotSaveChanges);
    } catch (const std::exception&) {
        // Every invoice is then made through the word processor, which reports what is wrong.
    }
}

void MergeRun::walkRows() {
    for (std::int32_t row = 1; row <= lineCount_ && !stopped_; ++row) {
        if (stopRequested()) {
            halt(row);
            return;
        }
        std::optional<MergeJob> job;
        Entry entry = plan(row, job);
        if (job && !submit(entry, std::move(*job))) {
            return;
        }
        pending_.push_back(std::move(entry));
        deliver(0);
    }
}

ResultList MergeRun::finish() {
    workers_.reset();
    if (stopped_) {
        result_.lines.push_back(Stopped + std::to_string(stopRow_));
    }
    if (!testOnly_ && choices_.WordClose) {
        session_.mfWBM_Quit(true);
    }
    result_.testOnly = testOnly_;
    session_.MergeResult(result_);
    session_.UI().resultListDialog(result_);
    return result_;
}

MergeRun::Entry MergeRun::plan(std::int32_t row, std::optional<MergeJob>& job) {
    Entry entry;
    entry.row = row;
    if (!session_.InvoiceRow(row)) {
        return entry;
    }
    const std::string docName = session_.NameTemplate().DocName(row, session_.CSV());
    const std::string path = FileNameTemplate::nativeDocPath(docName);
    const std::string shown = withoutExtension(path);
    if (!session_.DocFolderCheck(docName)) {
        entry.lines.push_back(MissingPath + shown);
        entry.error = true;
    } else if (!names_.claim(path)) {
        entry.lines.push_back(NameTaken + shown);
        entry.error = true;
    } else {
        entry.lines.push_back("  " + shown);
        if (!testOnly_) {
            job = MergeJob{row, docName, path, jobs_++};
            if (prepared_) {
                savedFolders_.insert(std::filesystem::path(path).parent_path().string());
            }
            if (choices_.PDF && proveCodes_) {
                entry.pdf = InvoiceMaker::pdfPathOf(path);
            }
        }
    }
    if (checkQR_) {
        for (const std::string& warning : QRBillValidator::validatePrinted(session_.Coder().QRText(row))) {
            entry.lines.push_back(QRWarning + warning);
        }
    }
    return entry;
}

bool MergeRun::submit(Entry& entry, MergeJob job) {
    if (!workers_) {
        // The dialogs of a failure belong between this invoice's steps, so they are shown at once.
        record(entry, maker_->make(session_.OpenDoc(), job, session_.CheckDoc(false)));
        return true;
    }
    while (workers_->full()) {
        deliver(WaitForOutcome);
        if (stopRequested()) {
            halt(entry.row);
            return false;
        }
    }
    entry.job = job.sequence;
    workers_->submit(std::move(job));
    return true;
}

void MergeRun::deliver(int waitMilliseconds) {
    auto wait = std::chrono::milliseconds(waitMilliseconds);
    while (!pending_.empty()) {
        Entry& head = pending_.front();
        if (head.job && workers_) {
            const auto outcome = workers_->take(*head.job, wait);
            if (!outcome) {
                return;
            }
            for (const std::string& message : outcome->messages) {
                session_.ShowFailure(message);
            }
            record(head, *outcome);
            head.job.reset(); // taken: the next look waits for its code only
        }
        if (!proven(head, wait)) {
            return;
        }
        add(head);
        pending_.pop_front();
        wait = std::chrono::milliseconds(0);
    }
}

void MergeRun::deliverAll() {
    bool asked = stopped_;
    while (!pending_.empty()) {
        deliver(WaitForOutcome);
        if (!asked && workers_ && stopRequested()) {
            asked = true;
            halt(lineCount_ + 1);
            // Only invoices not yet begun are left out; when none was waiting, the run is whole.
            stopped_ = stopRow_ <= lineCount_;
        }
    }
}

void MergeRun::flushFolders() {
    for (const std::string& folder : savedFolders_) {
        if (const std::error_code error = flushFolder(folder)) {
            result_.failedLines.push_back(result_.lines.size());
            result_.lines.push_back(NotFlushed + folder + " (" + error.message() + ")");
        }
    }
}

void MergeRun::halt(std::int32_t row) {
    stopped_ = true;
    stopRow_ = row;
    if (!workers_) {
        return;
    }
    // Invoices a thread has begun are finished; the others are not made and not listed.
    const std::vector<std::size_t> cancelled = workers_->cancelPending();
    const auto dropped = [&cancelled](const Entry& entry) {
        return entry.job && std::find(cancelled.begin(), cancelled.end(), *entry.job) != cancelled.end();
    };
    for (const Entry& entry : pending_) {
        if (dropped(entry)) {
            stopRow_ = std::min(stopRow_, entry.row);
        }
    }
    std::erase_if(pending_, dropped);
}

void MergeRun::record(Entry& entry, const InvoiceOutcome& outcome) {
    entry.error = entry.error || outcome.failed;
    entry.lines.insert(entry.lines.begin() + 1, outcome.notes.begin(), outcome.notes.end());
    if (outcome.pdfWritten) {
        prove(entry);
    }
}

void MergeRun::prove(Entry& entry) {
    if (entry.pdf.empty()) {
        return;
    }
    // Taken here: the control file is read by this thread only.
    std::string payload = session_.Coder().QRText(entry.row);
    entry.proof = std::async(std::launch::async, [pdf = entry.pdf, payload = std::move(payload)] {
        return PrintedCode::verdict(pdf, payload);
    });
}

bool MergeRun::proven(Entry& entry, std::chrono::milliseconds wait) {
    if (!entry.proof.valid()) {
        return true;
    }
    if (entry.proof.wait_for(wait) != std::future_status::ready) {
        return false;
    }
    const std::string verdict = entry.proof.get();
    if (!verdict.empty()) {
        entry.lines.insert(entry.lines.begin() + 1, CodeProblem + verdict);
        entry.error = true;
    }
    return true;
}

void MergeRun::add(Entry& entry) {
    if (!entry.lines.empty()) {
        ++result_.total;
        ++(entry.error ? result_.errors : result_.ok);
        for (std::size_t i = 0; entry.error && i < entry.lines.size(); ++i) {
            result_.failedLines.push_back(result_.lines.size() + i);
        }
        result_.lines.insert(result_.lines.end(), entry.lines.begin(), entry.lines.end());
        session_.UI().progressLabel(progressText(entry));
    }
    session_.UI().progressStep(entry.row, lineCount_);
    session_.UI().processEvents();
}

std::string MergeRun::progressText(const Entry& entry) const {
    // Invoices are counted, not rows: a row without an invoice date makes none.
    std::string text = "Rechnung " + std::to_string(result_.total) + " von " + std::to_string(invoiceCount_);
    const std::string customer = trim(session_.CSV().FieldStr("KliName", entry.row));
    return customer.empty() ? text : text + "\r\n" + customer;
}

bool MergeRun::stopRequested() {
    return session_.UI().stopRequested();
}

} // namespace wordbm
