#include "PdfTarget.h"

#include "support/AtomicFile.h"
#include "support/FileOps.h"
#include "support/SessionFolder.h"
#include "support/SystemErrorText.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <stdlib.h>
#include <unistd.h>

namespace wordbm::office {

namespace {

std::string flushToDisk(const std::string& path) {
    const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) {
        return SystemErrorText::of(errno);
    }
    const int synced = ::fsync(fd);
    const int error = errno;
    ::close(fd);
    return synced == 0 ? std::string() : SystemErrorText::of(error);
}

// mkdtemp makes it with mode 0700: invoices are nobody else's business.
std::string privateFolder() {
    std::string pattern = SessionFolder::get() + "/pdf-XXXXXX";
    if (::mkdtemp(pattern.data()) != nullptr) {
        return pattern;
    }
    std::error_code error;
    pattern = (std::filesystem::temp_directory_path(error) / "wordbm-pdf-XXXXXX").string();
    return !error && ::mkdtemp(pattern.data()) != nullptr ? pattern : std::string();
}

} // namespace

PdfTarget::PdfTarget(std::string target) : target_(std::move(target)), folder_(privateFolder()) {
    // Without a private folder LibreOffice's write fails, and the conversion says so.
    temporary_ = folder_.empty() ? std::string("/nonexistent/Export.pdf") : folder_ + "/Export.pdf";
}

PdfTarget::~PdfTarget() {
    if (!folder_.empty()) {
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }
}

std::string PdfTarget::commit() {
    if (std::string error = flushToDisk(temporary_); !error.empty()) {
        return error;
    }
    if (std::rename(temporary_.c_str(), target_.c_str()) == 0) {
        return {};
    }
    return errno == EXDEV ? copyOver() : SystemErrorText::of(errno);
}

std::string PdfTarget::copyOver() {
    const auto bytes = readFileBytes(temporary_);
    if (!bytes) {
        return "Die PDF-Datei kann nicht gelesen werden.";
    }
    AtomicFile file(target_);
    std::error_code error = file.open();
    if (!error) {
        error = file.write(*bytes);
    }
    if (!error) {
        error = file.commit();
    }
    return error ? SystemErrorText::of(error) : std::string();
}

} // namespace wordbm::office
