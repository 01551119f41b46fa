#include "engine/MergeRun.h"

#include "engine/InvoiceMaker.h"
#include "engine/MergeWorkers.h"
#include "engine/WordBM.h"
#include "engine/word/Bookmarks.h"
#include "engine/word/Document.h"
#include "qrbill/PrintedCode.h"
#include "qrbill/QRBillValidator.h"
#include "support/Folders.h"

#include <algorithm>
#include <exception>

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

MergeRun::MergeRun(WordBM& engine, const MergeChoices& choices, bool testOnly)
    : engine_(engine), choices_(choices), testOnly_(testOnly) {}

MergeRun::~MergeRun() = default;

void MergeRun::inspectForm() {
    try {
        const word::BookmarksPtr bookmarks = engine_.doc_->Bookmarks();
        const int count = bookmarks->Count();
        for (int i = 1; i <= count; ++i) {
            const std::string field = engine_.fields_.BookmarkFieldGet(bookmarks->Item(i)->Name());
            checkQR_ =
                checkQR_ || BookmarkFiller::isQRField(field) || field.starts_with(BookmarkFiller::SlipPrefix);
            proveCodes_ = proveCodes_ || field == "QRCode" || field == "ESQRQRCode";
        }
    } catch (const std::exception&) {
        // A form that cannot be read gets no QR warnings; its invoices fail on their own.
    }
}

ResultList MergeRun::run() {
    prepare();
    engine_.ui_.progressStart(testOnly_ ? "Dateinamen testen" : "Rechnungen erstellen", lineCount_);
    walkRows();
    deliverAll();
    engine_.ui_.progressStop();
    return finish();
}

void MergeRun::prepare() {
    WordBM& e = engine_;
    e.template_.WordPath(e.wordDoc_);
    e.template_.CSVPath(e.csvDoc_);
    lineCount_ = std::max(e.csv_.LineCount(), 0);
    inspectForm();
    for (const std::string* input : {&e.wordDoc_, &e.wordWork_, &e.csvDoc_, &e.csvWork_}) {
        names_.reserve(nativePath(*input));
    }
    if (testOnly_) {
        return;
    }
    if (e.mergeJobs_ > 1 && lineCount_ > 1) {
        workers_ = std::make_unique<MergeWorkers>(
            e.mergeJobs_,
            MergeWorkers::Setup{e.createWord_, e.wordWork_, choices_, &e.fields_, e.slip_.get()}, e.csv_);
        return;
    }
    const auto letEventsRun = [&e] { e.ui_.processEvents(); };
    filler_ = std::make_unique<BookmarkFiller>(e.fields_, e.csv_, e.coder_, e.qrImage_, e.slip_.get(),
                                               letEventsRun);
    const auto report = [&e](const std::string& text) { e.MyMsgBox(text, msgbox::Stop, WordBM::Title); };
    maker_ = std::make_unique<InvoiceMaker>(*e.word_, e.wordWork_, choices_, *filler_,
                                            InvoiceMaker::Hooks{report, letEventsRun, nullptr});
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
        engine_.mfWBM_Quit(true);
    }
    result_.testOnly = testOnly_;
    engine_.mergeResult_ = result_;
    engine_.ui_.resultListDialog(result_);
    return result_;
}

MergeRun::Entry MergeRun::plan(std::int32_t row, std::optional<MergeJob>& job) {
    WordBM& e = engine_;
    Entry entry;
    entry.row = row;
    if (!e.InvoiceRow(row)) {
        return entry;
    }
    const std::string docName = e.template_.DocName(row, e.csv_);
    const std::string path = FileNameTemplate::nativeDocPath(docName);
    const std::string shown = withoutExtension(path);
    if (!e.DocFolderCheck(docName)) {
        entry.lines.push_back(MissingPath + shown);
        entry.error = true;
    } else if (!names_.claim(path)) {
        entry.lines.push_back(NameTaken + shown);
        entry.error = true;
    } else {
        entry.lines.push_back("  " + shown);
        if (!testOnly_) {
            job = MergeJob{row, docName, path, jobs_++};
            if (choices_.PDF && proveCodes_) {
                entry.pdf = InvoiceMaker::pdfPathOf(path);
            }
        }
    }
    if (checkQR_) {
        for (const std::string& warning : QRBillValidator::validatePrinted(e.coder_.QRText(row))) {
            entry.lines.push_back(QRWarning + warning);
        }
    }
    return entry;
}

bool MergeRun::submit(Entry& entry, MergeJob job) {
    if (!workers_) {
        // The dialogs of a failure belong between this invoice's steps, so they are shown at once.
        record(entry, maker_->make(engine_.doc_, job, engine_.CheckDoc()));
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
                engine_.MyMsgBox(message, msgbox::Stop, WordBM::Title);
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
    std::string payload = engine_.coder_.QRText(entry.row);
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
        result_.lines.insert(result_.lines.end(), entry.lines.begin(), entry.lines.end());
    }
    engine_.ui_.progressStep(entry.row, lineCount_);
    engine_.ui_.processEvents();
}

bool MergeRun::stopRequested() {
    return engine_.ui_.stopRequested();
}

} // namespace wordbm
