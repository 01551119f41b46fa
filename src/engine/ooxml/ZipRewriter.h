#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <zip.h>

namespace wordbm::ooxml {

// Builds a new archive from an original one held in memory. Entries that are neither replaced
// nor removed are copied as they are stored (compressed bytes, header fields, order); added
// entries come last, deflated. Failures are AutomationErrors.
class ZipRewriter {
public:
    // `original` must outlive the rewriter.
    explicit ZipRewriter(std::string_view original);
    ~ZipRewriter();
    ZipRewriter(const ZipRewriter&) = delete;
    ZipRewriter& operator=(const ZipRewriter&) = delete;

    // `method` is the original's (stored or deflated), kept so a stored entry stays stored.
    void replace(std::uint64_t index, std::string bytes, std::int32_t method);
    void remove(std::uint64_t index);
    void add(std::string_view name, std::string bytes);
    // The finished archive; the rewriter cannot be used afterwards.
    std::string finish();

private:
    zip_source_t* keep(std::string bytes);
    [[noreturn]] void fail() const;

    zip_source_t* archive_ = nullptr; // our own reference to the in-memory archive
    zip_t* zip_ = nullptr;
    std::deque<std::string> pending_; // new entry bytes, read only when the archive is closed
};

} // namespace wordbm::ooxml
