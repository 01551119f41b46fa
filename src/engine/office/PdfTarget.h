#pragma once

#include <string>

namespace wordbm::office {

// Where LibreOffice writes a wanted PDF: a private folder of this run's session folder, so that
// neither the half-written PDF nor LibreOffice's own temporary files ("lu….tmp") ever show in the
// target's folder, and a killed run's leftovers go with its session folder. Commit moves the
// finished file over the target in one step; dropped without commit, the folder is removed.
class PdfTarget {
public:
    explicit PdfTarget(std::string target);
    ~PdfTarget();
    PdfTarget(const PdfTarget&) = delete;
    PdfTarget& operator=(const PdfTarget&) = delete;

    const std::string& temporaryPath() const { return temporary_; }
    // Flushes the file to disk and puts it in place of the target. Returns the system's description
    // of a failure, empty on success.
    std::string commit();

private:
    // The target on another file system: a copy beside it, renamed over it when complete.
    std::string copyOver();

    std::string target_;
    std::string folder_;
    std::string temporary_;
};

} // namespace wordbm::office
