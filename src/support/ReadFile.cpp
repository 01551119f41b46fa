#include "support/ReadFile.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace wordbm {

namespace {

constexpr std::size_t ChunkBytes = std::size_t{1} << 16;

std::error_code lastError() {
    return {errno, std::generic_category()};
}

} // namespace

ReadFile::ReadFile(const std::string& path) {
    // A NUL byte would silently shorten the path at the system call.
    if (path.empty() || path.find('\0') != std::string::npos) {
        error_ = std::make_error_code(std::errc::no_such_file_or_directory);
        return;
    }
    fd_ = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd_ < 0) {
        error_ = lastError();
        return;
    }
    struct stat info {};
    if (::fstat(fd_, &info) != 0) {
        error_ = lastError();
    } else if (S_ISDIR(info.st_mode)) {
        error_ = std::make_error_code(std::errc::is_a_directory);
    } else if (!S_ISREG(info.st_mode)) {
        error_ = std::make_error_code(std::errc::invalid_argument);
    }
}

ReadFile::~ReadFile() {
    if (fd_ >= 0) {
        ::close(fd_);
    }
}

std::optional<std::size_t> ReadFile::readSome(char* buffer, std::size_t size) {
    if (error_) {
        return std::nullopt;
    }
    for (;;) {
        const auto got = ::read(fd_, buffer, size);
        if (got >= 0) {
            return static_cast<std::size_t>(got);
        }
        if (errno != EINTR) {
            error_ = lastError();
            return std::nullopt;
        }
    }
}

bool ReadFile::readAll(std::string& into, std::size_t limit) {
    if (into.size() > limit) {
        error_ = std::make_error_code(std::errc::file_too_large);
        return false;
    }
    return readChunks(limit - into.size(), [&into](std::string_view bytes) { into.append(bytes); });
}

bool ReadFile::readChunks(std::size_t limit, const std::function<void(std::string_view)>& take) {
    std::array<char, ChunkBytes> chunk{};
    std::size_t total = 0;
    for (;;) {
        const auto got = readSome(chunk.data(), chunk.size());
        if (!got) {
            return false;
        }
        if (*got == 0) {
            return true;
        }
        if ((total += *got) > limit) {
            error_ = std::make_error_code(std::errc::file_too_large);
            return false;
        }
        take(std::string_view(chunk.data(), *got));
    }
}

std::size_t ReadFile::sizeHint() const {
    struct stat info {};
    if (fd_ < 0 || ::fstat(fd_, &info) != 0 || info.st_size <= 0) {
        return 0;
    }
    return static_cast<std::size_t>(info.st_size);
}

} // namespace wordbm
