#pragma once

#include <string>
#include <string_view>
#include <system_error>

namespace wordbm {

// A file written beside its target and renamed over it only when complete, so that readers see
// either the old or the new content. Dropped without commit, the temporary file is removed.
class AtomicFile {
public:
    explicit AtomicFile(std::string target);
    ~AtomicFile();
    AtomicFile(const AtomicFile&) = delete;
    AtomicFile& operator=(const AtomicFile&) = delete;

    std::error_code open();
    std::error_code write(std::string_view bytes);
    // Flushes to disk, closes and renames over the target. Without `flush` the flush is left to a
    // later flushFolder() (FileOps), so that a run of many files pays for one.
    std::error_code commit(bool flush = true);

private:
    void discard();
    void keepTargetMode();

    std::string target_;
    std::string temp_;
    int fd_ = -1;
};

} // namespace wordbm
