#include "OfficeConverter.h"

#include "FileUrl.h"
#include "PdfTarget.h"
#include "WorkerProcess.h"
#include "WorkerProgram.h"
#include "WorkerProtocol.h"
#include "engine/word/AutomationError.h"
#include "support/FileOps.h"

#include <algorithm>
#include <cstring>
#include <exception>
#include <filesystem>
#include <fstream>
#include <thread>

namespace wordbm::office {

namespace {

// A cold LibreOffice needs about a second; a loaded machine may need many more.
constexpr std::chrono::milliseconds StartTimeout{90'000};

const char* const LineBreak = "\r\n";

int defaultPoolSize() {
    return std::clamp(static_cast<int>(std::thread::hardware_concurrency()), 2, 4);
}

// .docx and .docm are zip packages. LibreOffice would open anything else too, as plain text
// if need be, and turn a damaged form into a PDF of garbage.
bool startsLikeZip(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    char magic[4] = {};
    in.read(magic, sizeof magic);
    return in.gcount() == sizeof magic && std::memcmp(magic, "PK\x03\x04", sizeof magic) == 0;
}

void checkSource(const std::string& documentPath) {
    if (const std::string problem = FileOpenCheck(documentPath); !problem.empty()) {
        throw AutomationError(problem);
    }
    if (!startsLikeZip(documentPath)) {
        throw AutomationError("Kein Word-Dokument (.docx/.docm)!" + (LineBreak + documentPath));
    }
}

std::string checkedTarget(const std::string& pdfPath) {
    if (pdfPath.empty()) {
        throw AutomationError("Kein Name für die PDF-Datei angegeben!");
    }
    std::error_code ignored;
    const auto target = std::filesystem::absolute(pdfPath, ignored);
    if (!std::filesystem::is_directory(target.parent_path(), ignored)) {
        throw AutomationError("Ordner nicht gefunden!" + (LineBreak + target.parent_path().string()));
    }
    return target.string();
}

std::string failureText(const WorkerProcess::Result& result, const std::string& documentPath,
                        const std::string& pdfPath) {
    if (result.outcome == WorkerProcess::Outcome::TimedOut) {
        return "LibreOffice antwortet nicht (Zeitüberschreitung beim Erstellen der PDF-Datei)!" +
               (LineBreak + documentPath);
    }
    if (result.outcome == WorkerProcess::Outcome::Crashed) {
        return "LibreOffice ist beim Erstellen der PDF-Datei abgestürzt!" + (LineBreak + documentPath);
    }
    if (result.kind == protocol::LoadFailed) {
        return "LibreOffice kann das Dokument nicht öffnen!" + (LineBreak + documentPath);
    }
    if (result.kind == protocol::NotText) {
        return "Das Dokument ist kein Textdokument!" + (LineBreak + documentPath);
    }
    if (result.kind == protocol::SaveFailed) {
        return "Kann PDF-Datei nicht schreiben!" + (LineBreak + pdfPath);
    }
    return "Fehler im LibreOffice-Hilfsprogramm: " + result.detail;
}

} // namespace

OfficeConverter::OfficeConverter() : poolSize_(defaultPoolSize()) {}

OfficeConverter::~OfficeConverter() {
    stopIdleWorkers();
}

OfficeConverter& OfficeConverter::shared() {
    static OfficeConverter converter;
    return converter;
}

void OfficeConverter::toPdf(const std::string& documentPath, const std::string& pdfPath, bool pdfA) {
    checkSource(documentPath);
    const std::string target = checkedTarget(pdfPath);
    // A worker that died between two documents (killed, out of memory) costs one more try on a
    // fresh worker; a document that brings down two workers is reported.
    convertOnce(documentPath, target, pdfA, 1);
}

void OfficeConverter::convertOnce(const std::string& documentPath, const std::string& pdfPath, bool pdfA,
                                  int attempt) {
    PdfTarget target(pdfPath);
    Worker worker = acquire();
    const auto result =
        worker->exportPdf(fileUrl(documentPath), fileUrl(target.temporaryPath()), pdfA, currentTimeout());
    release(std::move(worker));
    if (result.outcome == WorkerProcess::Outcome::Crashed && attempt == 1) {
        return convertOnce(documentPath, pdfPath, pdfA, attempt + 1);
    }
    if (result.outcome != WorkerProcess::Outcome::Done) {
        throw AutomationError(failureText(result, documentPath, pdfPath));
    }
    if (const std::string error = target.commit(); !error.empty()) {
        throw AutomationError("Kann PDF-Datei nicht speichern!" + (LineBreak + pdfPath) + LineBreak + error);
    }
}

std::chrono::milliseconds OfficeConverter::currentTimeout() const {
    const std::lock_guard lock(mutex_);
    return timeout_;
}

void OfficeConverter::setPoolSize(int workers) {
    std::vector<Worker> surplus;
    {
        const std::lock_guard lock(mutex_);
        poolSize_ = std::max(1, workers);
        while (running_ > poolSize_ && !idle_.empty()) {
            surplus.push_back(std::move(idle_.back()));
            idle_.pop_back();
            --running_;
        }
    }
    workerFree_.notify_all();
}

int OfficeConverter::poolSize() const {
    const std::lock_guard lock(mutex_);
    return poolSize_;
}

void OfficeConverter::setTimeout(std::chrono::milliseconds timeout) {
    const std::lock_guard lock(mutex_);
    timeout_ = timeout;
}

void OfficeConverter::setDocumentsPerWorker(int documents) {
    const std::lock_guard lock(mutex_);
    documentsPerWorker_ = std::max(1, documents);
}

void OfficeConverter::warmUp() {
    int missing = 0;
    {
        const std::lock_guard lock(mutex_);
        missing = std::max(0, poolSize_ - running_);
        running_ += missing;
    }
    std::vector<Worker> started(static_cast<std::size_t>(missing));
    std::vector<std::exception_ptr> errors(started.size());
    {
        std::vector<std::jthread> starters;
        for (std::size_t i = 0; i < started.size(); ++i) {
            starters.emplace_back([&, i] {
                try {
                    started[i] = startWorker();
                } catch (...) {
                    errors[i] = std::current_exception();
                }
            });
        }
    }
    {
        const std::lock_guard lock(mutex_);
        for (auto& worker : started) {
            if (worker) {
                idle_.push_back(std::move(worker));
            } else {
                --running_;
            }
        }
    }
    workerFree_.notify_all();
    for (const auto& error : errors) {
        if (error) {
            std::rethrow_exception(error);
        }
    }
}

void OfficeConverter::stopIdleWorkers() {
    std::vector<Worker> stopping;
    {
        const std::lock_guard lock(mutex_);
        stopping.swap(idle_);
        running_ -= static_cast<int>(stopping.size());
    }
    workerFree_.notify_all();
}

std::vector<pid_t> OfficeConverter::idleWorkerPids() const {
    const std::lock_guard lock(mutex_);
    std::vector<pid_t> pids;
    for (const auto& worker : idle_) {
        pids.push_back(worker->pid());
    }
    return pids;
}

OfficeConverter::Worker OfficeConverter::acquire() {
    std::unique_lock lock(mutex_);
    workerFree_.wait(lock, [this] { return !idle_.empty() || running_ < poolSize_; });
    if (!idle_.empty()) {
        // The most recently used worker is the warmest.
        Worker worker = std::move(idle_.back());
        idle_.pop_back();
        return worker;
    }
    ++running_;
    lock.unlock();
    try {
        return startWorker();
    } catch (...) {
        lock.lock();
        --running_;
        lock.unlock();
        workerFree_.notify_one();
        throw;
    }
}

void OfficeConverter::release(Worker worker) {
    {
        const std::lock_guard lock(mutex_);
        if (!worker->broken() && worker->documents() < documentsPerWorker_ && running_ <= poolSize_) {
            idle_.push_back(std::move(worker));
        } else {
            --running_;
        }
    }
    workerFree_.notify_one();
    // A worker not taken back (broken, worn out, surplus) is killed here, outside the lock.
}

OfficeConverter::Worker OfficeConverter::startWorker() const {
    // A worker that ends while LibreOffice starts (seen once on a fresh machine's first run) is
    // started once more; the second failure reaches the user with its exit status and last lines.
    try {
        return std::make_unique<WorkerProcess>(findWorkerProgram(), StartTimeout);
    } catch (const WorkerProcess::EndedAtStart&) {
        return std::make_unique<WorkerProcess>(findWorkerProgram(), StartTimeout);
    }
}

} // namespace wordbm::office
