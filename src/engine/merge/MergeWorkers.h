#pragma once

#include "data/CSVfile.h"
#include "engine/merge/InvoiceOutcome.h"
#include "engine/merge/MergeJob.h"
#include "engine/merge/PrintTurns.h"
#include "engine/ports/MergeChoices.h"
#include "engine/word/Forward.h"

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace wordbm {

class KnownFields;
class PreparedForms;
class SlipPort;

// Threads that make invoices side by side for the merge run. Each thread starts a word processor
// of its own, opens its own copy of the working form and keeps its own copy of the control file,
// so no document or XML tree is ever touched by two threads. The run hands in jobs in row order
// and takes the outcomes back in the same order.
class MergeWorkers {
public:
    struct Setup {
        std::function<word::ApplicationPtr()> createWord;
        std::string workingForm;
        MergeChoices choices;
        // Read by every thread; must not change while the workers run.
        const KnownFields* fields = nullptr;
        SlipPort* slip = nullptr;
        // Shared by every thread; may be null.
        const PreparedForms* prepared = nullptr;
    };

    // Copies `data` once per thread before any thread starts.
    MergeWorkers(int threads, Setup setup, const CSVfile& data);
    // Drops the jobs not begun and waits for the others.
    ~MergeWorkers();
    MergeWorkers(const MergeWorkers&) = delete;
    MergeWorkers& operator=(const MergeWorkers&) = delete;

    // Whether another job would wait longer than the threads need to reach it.
    bool full() const;
    void submit(MergeJob job);
    // The outcome of the job with this sequence number once it is ready, waiting up to `wait`.
    std::optional<InvoiceOutcome> take(std::size_t sequence, std::chrono::milliseconds wait);
    // Drops the jobs no thread has begun and returns their sequence numbers.
    std::vector<std::size_t> cancelPending();

private:
    struct Worker;

    void work(Worker& worker);
    std::optional<MergeJob> next();
    void publish(std::size_t sequence, InvoiceOutcome outcome);

    Setup setup_;
    PrintTurns printTurns_;
    std::vector<std::unique_ptr<Worker>> workers_;
    std::vector<std::thread> threads_;

    mutable std::mutex mutex_;
    std::condition_variable jobReady_;
    std::condition_variable outcomeReady_;
    std::deque<MergeJob> jobs_;
    std::map<std::size_t, InvoiceOutcome> outcomes_;
    bool closing_ = false;
};

} // namespace wordbm
