#include "support/AtomicFile.h"

#include "support/HiddenTemporary.h"

#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace wordbm {

namespace {

constexpr int NameAttempts = 100;

std::error_code lastError() {
    return {errno, std::generic_category()};
}

// A short name, so that a target name near the length limit still leaves room for it; one that
// says which process wrote it, so that a later run removes it when this one was killed.
std::string tempNameBeside(const std::filesystem::path& target) {
    return HiddenTemporary::besideIn(target.parent_path().string());
}

// A symbolic link keeps pointing at the file it named; the link itself is not replaced.
std::string resolvedTarget(const std::string& target) {
    std::error_code error;
    if (!std::filesystem::is_symlink(target, error)) {
        return target;
    }
    const auto resolved = std::filesystem::weakly_canonical(target, error);
    return error ? target : resolved.string();
}

} // namespace

AtomicFile::AtomicFile(std::string target) : target_(resolvedTarget(target)) {}

AtomicFile::~AtomicFile() {
    discard();
}

std::error_code AtomicFile::open() {
    if (target_.empty() || target_.find('\0') != std::string::npos) {
        return std::make_error_code(std::errc::invalid_argument);
    }
    for (int attempt = 0; attempt < NameAttempts; ++attempt) {
        temp_ = tempNameBeside(target_);
        fd_ = ::open(temp_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (fd_ >= 0) {
            keepTargetMode();
            return {};
        }
        if (errno != EEXIST) {
            const auto error = lastError();
            temp_.clear();
            return error;
        }
    }
    temp_.clear();
    return std::make_error_code(std::errc::file_exists);
}

std::error_code AtomicFile::write(std::string_view bytes) {
    while (!bytes.empty()) {
        const auto written = ::write(fd_, bytes.data(), bytes.size());
        if (written < 0) {
            if (errno == EINTR) {
                continue;
            }
            return lastError();
        }
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return {};
}

std::error_code AtomicFile::commit(bool flush) {
    if (flush && ::fsync(fd_) != 0) {
        return lastError();
    }
    const int fd = fd_;
    fd_ = -1;
    if (::close(fd) != 0) {
        return lastError();
    }
    if (::rename(temp_.c_str(), target_.c_str()) != 0) {
        return lastError();
    }
    temp_.clear();
    return {};
}

void AtomicFile::discard() {
    if (fd_ >= 0) {
        ::close(fd_);
        fd_ = -1;
    }
    if (!temp_.empty()) {
        ::unlink(temp_.c_str());
        temp_.clear();
    }
}

void AtomicFile::keepTargetMode() {
    // Best effort: a settings file the user made private stays private after the rewrite.
    struct stat existing {};
    if (::stat(target_.c_str(), &existing) == 0 && S_ISREG(existing.st_mode)) {
        ::fchmod(fd_, existing.st_mode & 07777);
    }
}

} // namespace wordbm
