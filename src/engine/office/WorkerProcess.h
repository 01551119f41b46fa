#pragma once

#include "LineChannel.h"
#include "engine/word/AutomationError.h"

#include <chrono>
#include <memory>
#include <string>
#include <sys/types.h>

namespace wordbm::office {

// One running wordbm-office-worker with its own LibreOffice profile in a private temporary
// folder. Destroying it kills the process and removes the folder.
class WorkerProcess {
public:
    enum class Outcome {
        Done,     // the PDF is written
        Refused,  // LibreOffice could not do it; the worker is fine
        Crashed,  // the worker died or answered nonsense
        TimedOut, // no answer in time; the worker must go
    };
    struct Result {
        Outcome outcome = Outcome::Crashed;
        std::string kind; // for Refused: the ERROR kind of WorkerProtocol.h
        std::string detail;
    };

    // The worker ended before it was ready; the description carries its exit status and the last
    // lines it printed. Worth one more try: LibreOffice's very first start on a fresh profile may end.
    class EndedAtStart : public AutomationError {
    public:
        using AutomationError::AutomationError;
    };

    // Starts program and waits until LibreOffice is up. Throws AutomationError when it does not
    // come up within startTimeout, EndedAtStart when it ends before.
    WorkerProcess(const std::string& program, std::chrono::milliseconds startTimeout);
    ~WorkerProcess();
    WorkerProcess(const WorkerProcess&) = delete;
    WorkerProcess& operator=(const WorkerProcess&) = delete;

    Result exportPdf(const std::string& sourceUrl, const std::string& targetUrl, bool pdfA,
                     std::chrono::milliseconds timeout);

    pid_t pid() const { return pid_; }
    int documents() const { return documents_; } // conversions asked of it so far
    bool broken() const { return broken_; }      // crashed or hung; only fit to be destroyed

private:
    void makeProfileFolder();
    void spawn(const std::string& program);
    void awaitReady(std::chrono::milliseconds timeout);
    void stop() noexcept;

    // Why the worker that closed its channel at start-up ended, and what it printed last.
    std::string endReport();

    std::string profileFolder_;
    std::string logPath_;
    pid_t pid_ = -1;
    std::unique_ptr<LineChannel> channel_;
    int documents_ = 0;
    bool broken_ = false;
};

} // namespace wordbm::office
