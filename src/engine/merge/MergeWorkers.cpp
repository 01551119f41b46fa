#include "engine/merge/MergeWorkers.h"

#include "engine/merge/BookmarkFiller.h"
#include "engine/merge/InvoiceMaker.h"
#include "engine/word/Application.h"
#include "engine/word/AutomationError.h"
#include "engine/word/Document.h"
#include "engine/word/Documents.h"
#include "engine/word/WordConstants.h"
#include "qrbill/QRCoder.h"
#include "qrbill/QRImage.h"

#include <exception>

namespace wordbm {

namespace {

constexpr const char* CrLf = "\r\n";

} // namespace

// What one thread owns: its copy of the control file and the companions that read it.
struct MergeWorkers::Worker {
    explicit Worker(const CSVfile& source) : data(source) {}

    CSVfile data;
    QRCoder coder{data};
    QRImage image;
};

MergeWorkers::MergeWorkers(int threads, Setup setup, const CSVfile& data) : setup_(std::move(setup)) {
    for (int i = 0; i < threads; ++i) {
        workers_.push_back(std::make_unique<Worker>(data));
    }
    for (const auto& worker : workers_) {
        threads_.emplace_back([this, target = worker.get()] { work(*target); });
    }
}

MergeWorkers::~MergeWorkers() {
    cancelPending();
    {
        const std::lock_guard lock(mutex_);
        closing_ = true;
    }
    jobReady_.notify_all();
    for (std::thread& thread : threads_) {
        thread.join();
    }
}

bool MergeWorkers::full() const {
    const std::lock_guard lock(mutex_);
    return jobs_.size() >= workers_.size();
}

void MergeWorkers::submit(MergeJob job) {
    {
        const std::lock_guard lock(mutex_);
        jobs_.push_back(std::move(job));
    }
    jobReady_.notify_one();
}

std::optional<InvoiceOutcome> MergeWorkers::take(std::size_t sequence, std::chrono::milliseconds wait) {
    std::unique_lock lock(mutex_);
    outcomeReady_.wait_for(lock, wait, [&] { return outcomes_.contains(sequence); });
    const auto found = outcomes_.find(sequence);
    if (found == outcomes_.end()) {
        return std::nullopt;
    }
    InvoiceOutcome outcome = std::move(found->second);
    outcomes_.erase(found);
    return outcome;
}

std::vector<std::size_t> MergeWorkers::cancelPending() {
    const std::lock_guard lock(mutex_);
    std::vector<std::size_t> cancelled;
    for (const MergeJob& job : jobs_) {
        cancelled.push_back(job.sequence);
    }
    jobs_.clear();
    return cancelled;
}

std::optional<MergeJob> MergeWorkers::next() {
    std::unique_lock lock(mutex_);
    jobReady_.wait(lock, [&] { return closing_ || !jobs_.empty(); });
    if (jobs_.empty()) {
        return std::nullopt;
    }
    MergeJob job = std::move(jobs_.front());
    jobs_.pop_front();
    return job;
}

void MergeWorkers::publish(std::size_t sequence, InvoiceOutcome outcome) {
    {
        const std::lock_guard lock(mutex_);
        outcomes_.emplace(sequence, std::move(outcome));
    }
    outcomeReady_.notify_all();
}

void MergeWorkers::work(Worker& worker) {
    // The form is opened for the first invoice only: a thread that gets none (a run of fewer
    // invoices than threads) never loads it, which matters for a form of many pages.
    std::optional<MergeJob> job = next();
    if (!job) {
        return;
    }
    word::ApplicationPtr word;
    word::DocumentPtr doc;
    std::string setupFailure;
    try {
        word = setup_.createWord();
        if (!word) {
            throw AutomationError("Word.Application kann nicht erstellt werden.");
        }
        doc = word->Documents()->Open(setup_.workingForm);
    } catch (const std::exception& failure) {
        setupFailure = failure.what();
    }
    BookmarkFiller filler(*setup_.fields, worker.data, worker.coder, worker.image, setup_.slip, {});
    const bool printing = setup_.choices.Print;
    std::optional<InvoiceMaker> maker;
    if (word) {
        maker.emplace(*word, setup_.workingForm, setup_.choices, filler,
                      InvoiceMaker::Hooks{{}, {}, printing ? &printTurns_ : nullptr, setup_.prepared});
    }
    for (; job; job = next()) {
        if (!maker) {
            InvoiceOutcome outcome;
            outcome.failed = true;
            outcome.messages.push_back(setupFailure + CrLf + "Die Rechnung wurde nicht gespeichert!");
            if (printing) {
                // Give the turn on, or the invoices after this one would wait for it forever.
                printTurns_.wait(job->sequence);
                printTurns_.done(job->sequence);
            }
            publish(job->sequence, std::move(outcome));
            continue;
        }
        // Without a document (its opening failed) the maker reports the failed save and tries again.
        InvoiceOutcome outcome;
        try {
            outcome = maker->make(doc, *job, doc != nullptr);
        } catch (const std::exception& failure) {
            // Out of memory and the like: this invoice is lost, the run and its order are not.
            outcome.failed = true;
            outcome.messages.push_back(failure.what() + std::string(CrLf) +
                                       "Die Rechnung wurde nicht gespeichert!");
        }
        publish(job->sequence, std::move(outcome));
    }
    if (word) {
        try {
            word->Quit(word::wd::wdDoNotSaveChanges);
        } catch (const std::exception&) {
            // The thread's word processor had nothing to save; one that will not quit is let go of anyway.
        }
    }
}

} // namespace wordbm
