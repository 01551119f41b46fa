#pragma once

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <string>
#include <sys/types.h>
#include <vector>

namespace wordbm::office {

class WorkerProcess;

// PDF export through a pool of warm LibreOffice workers (wordbm-office-worker, one process each,
// see WorkerProgram.h for where it is found). A worker starts on first need and then stays up;
// it is replaced after a crash, after a hung conversion and after a number of documents.
// Thread-safe: several threads may convert at once, each on a worker of its own.
class OfficeConverter {
public:
    OfficeConverter();
    ~OfficeConverter();
    OfficeConverter(const OfficeConverter&) = delete;
    OfficeConverter& operator=(const OfficeConverter&) = delete;

    // The program's pool; its workers end with the program.
    static OfficeConverter& shared();

    // Converts a .docx/.docm file to PDF (or PDF/A-1 when pdfA), written atomically to pdfPath.
    // Images keep their resolution and are stored losslessly. Throws AutomationError with a
    // German description.
    void toPdf(const std::string& documentPath, const std::string& pdfPath, bool pdfA);

    // At least 1; the default is one per core, 2 to 4. Surplus idle workers stop at once.
    void setPoolSize(int workers);
    int poolSize() const;
    // How long one conversion may take before its worker is killed (default 120 s).
    void setTimeout(std::chrono::milliseconds timeout);
    // A worker is replaced after this many documents (default 300), which bounds its memory.
    void setDocumentsPerWorker(int documents);
    // Starts the missing workers now, side by side, instead of on first need. Throws AutomationError.
    void warmUp();
    // Stops every idle worker; the next conversion starts a fresh one.
    void stopIdleWorkers();
    // Process ids of the workers waiting for work (diagnostics and tests).
    std::vector<pid_t> idleWorkerPids() const;

private:
    using Worker = std::unique_ptr<WorkerProcess>;

    Worker acquire();
    void release(Worker worker);
    Worker startWorker() const;
    void convertOnce(const std::string& documentPath, const std::string& pdfPath, bool pdfA, int attempt);
    std::chrono::milliseconds currentTimeout() const;

    mutable std::mutex mutex_;
    std::condition_variable workerFree_;
    std::vector<Worker> idle_;
    int running_ = 0; // idle, busy and starting
    int poolSize_;
    std::chrono::milliseconds timeout_{120'000};
    int documentsPerWorker_ = 300;
};

} // namespace wordbm::office
