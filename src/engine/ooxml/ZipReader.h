#pragma once

#include "engine/ooxml/PackageLimits.h"
#include "engine/ooxml/ZipEntry.h"

#include <memory>
#include <string_view>
#include <vector>
#include <zip.h>

namespace wordbm::ooxml {

// Reads a whole zip archive held in memory and refuses what a hostile archive could use:
// unsafe or duplicate names, encryption, unknown compression, and anything over the limits,
// checked on the central directory first and again on the bytes actually inflated.
// Every failure is an AutomationError with a German description.
class ZipReader {
public:
    // `archive` must outlive the reader.
    ZipReader(std::string_view archive, const PackageLimits& limits);

    // Entries in the order of the central directory, folder entries ("word/") included.
    std::vector<ZipEntry> readAll();

private:
    struct Discard {
        void operator()(zip_t* zip) const { zip_discard(zip); }
    };

    std::vector<zip_stat_t> checkedDirectory();
    void checkEntry(const zip_stat_t& stat);
    std::string inflate(const zip_stat_t& stat);
    void checkInflated(const zip_stat_t& stat, std::uint64_t produced) const;

    std::unique_ptr<zip_t, Discard> zip_;
    PackageLimits limits_;
    std::uint64_t declaredTotal_ = 0;
};

} // namespace wordbm::ooxml
