#include "PdfTarget.h"

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <unistd.h>

namespace wordbm::office {

namespace {

// Unique among the threads and processes that may export into the same folder at once.
std::string temporaryName(const std::filesystem::path& target) {
    static std::atomic<unsigned> counter{0};
    return "." + target.filename().string() + "." + std::to_string(::getpid()) + "-" +
           std::to_string(++counter) + ".tmp";
}

std::string flushToDisk(const std::string& path) {
    const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) {
        return std::strerror(errno);
    }
    const int synced = ::fsync(fd);
    const int error = errno;
    ::close(fd);
    return synced == 0 ? std::string() : std::strerror(error);
}

} // namespace

PdfTarget::PdfTarget(std::string target) : target_(std::move(target)) {
    const std::filesystem::path path(target_);
    temporary_ = (path.parent_path() / temporaryName(path)).string();
}

PdfTarget::~PdfTarget() {
    if (!committed_) {
        std::remove(temporary_.c_str());
    }
}

std::string PdfTarget::commit() {
    std::string error = flushToDisk(temporary_);
    if (error.empty() && std::rename(temporary_.c_str(), target_.c_str()) != 0) {
        error = std::strerror(errno);
    }
    committed_ = error.empty();
    return error;
}

} // namespace wordbm::office
