#pragma once

#include <string>

namespace wordbm::office {

// The temporary file that LibreOffice writes beside the wanted PDF, renamed over it only once
// complete, so that a reader never sees half a PDF. Dropped without commit, it is removed.
class PdfTarget {
public:
    explicit PdfTarget(std::string target);
    ~PdfTarget();
    PdfTarget(const PdfTarget&) = delete;
    PdfTarget& operator=(const PdfTarget&) = delete;

    const std::string& temporaryPath() const { return temporary_; }
    // Flushes the temporary file to disk and renames it over the target. Returns the system's
    // description of a failure, empty on success.
    std::string commit();

private:
    std::string target_;
    std::string temporary_;
    bool committed_ = false;
};

} // namespace wordbm::office
