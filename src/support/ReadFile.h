#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

namespace wordbm {

// A regular file opened for reading, closed with the object. Folders, devices and pipes are
// refused when opening, since they could not be read at all or would be read forever.
class ReadFile {
public:
    explicit ReadFile(const std::string& path);
    ~ReadFile();
    ReadFile(const ReadFile&) = delete;
    ReadFile& operator=(const ReadFile&) = delete;

    // Why the file could not be opened or read; empty while all is well.
    std::error_code error() const { return error_; }

    // Up to `size` bytes; 0 at the end; nullopt on a failure (see error()).
    std::optional<std::size_t> readSome(char* buffer, std::size_t size);

    // The rest of the file appended to `into`; false when it fails or would pass `limit` bytes.
    bool readAll(std::string& into, std::size_t limit);

    // The rest of the file handed to `take` in chunks of up to 64 KiB; false when reading fails or
    // the rest passes `limit` bytes (then error() says file_too_large).
    bool readChunks(std::size_t limit, const std::function<void(std::string_view)>& take);

    // The size the file has now, for reserving; 0 when unknown.
    std::size_t sizeHint() const;

private:
    int fd_ = -1;
    std::error_code error_;
};

} // namespace wordbm
