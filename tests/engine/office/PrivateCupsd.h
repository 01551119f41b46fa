#pragma once

#include "kit/TempDir.h"

#include <chrono>
#include <filesystem>
#include <string>
#include <sys/types.h>

// A cupsd of the test's own: configuration, spool, logs and a domain socket in a temporary
// folder, with one cups-pdf queue that writes what it prints into outputFolder(). cups-pdf reads
// its settings only from /etc/cups, so the queue's settings file lives there while the server runs.
class PrivateCupsd {
public:
    PrivateCupsd();
    ~PrivateCupsd();
    PrivateCupsd(const PrivateCupsd&) = delete;
    PrivateCupsd& operator=(const PrivateCupsd&) = delete;

    // Why no cupsd can run here at all (not root, not installed, does not come up); else empty.
    const std::string& unavailable() const { return unavailable_; }
    // What went wrong around a running cupsd (settings, the queue); else empty.
    const std::string& setupError() const { return setupError_; }

    const std::string& socketPath() const { return socket_; }
    const std::string& queue() const { return queue_; }
    std::filesystem::path clientFolder() const { return folder_.path() / "client"; }

    bool makeQueueDefault() const;
    // The first PDF cups-pdf has finished, or empty when none comes in time.
    std::string waitForPrintedPdf(std::chrono::seconds patience) const;
    std::string errorLogTail() const;

private:
    std::string writeSettings();
    std::string startDaemon();
    bool running() const;

    TempDir folder_;
    std::string socket_;
    std::string queue_ = "wordbm-pdf";
    std::string deviceUri_;
    std::string cupsPdfSettings_;
    pid_t pid_ = -1;
    std::string unavailable_;
    std::string setupError_;
};
