#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace lok {
class Office;
}

namespace wordbm::office {

// LibreOffice loaded into this process through LibreOfficeKit, turning documents into PDF.
// Lives until the process ends: tearing LibreOfficeKit 7.4 down aborts, so the worker leaves
// with _exit and never destroys it.
class LokHost {
public:
    struct Failure {
        std::string_view kind; // one of the ERROR kinds of WorkerProtocol.h
        std::string detail;
    };

    // Starts the office from installPath with its own user profile (a file URL).
    // Throws std::runtime_error with LibreOffice's reason when it does not start.
    LokHost(const std::string& installPath, const std::string& profileUrl);
    LokHost(const LokHost&) = delete;
    LokHost& operator=(const LokHost&) = delete;

    // Writes the document at sourceUrl as PDF (PDF/A-1 with pdfA) to targetUrl.
    std::optional<Failure> exportPdf(const std::string& sourceUrl, const std::string& targetUrl, bool pdfA);

private:
    std::string takeError();

    lok::Office* office_;
};

} // namespace wordbm::office
