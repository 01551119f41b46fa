#include "engine/ooxml/ZipReader.h"

#include "engine/ooxml/PackageError.h"
#include "engine/ooxml/PartName.h"

#include <algorithm>
#include <unordered_set>

namespace wordbm::ooxml {

namespace {

constexpr std::size_t ReadChunk = 64 * 1024;
constexpr zip_uint64_t NeededStat =
    ZIP_STAT_NAME | ZIP_STAT_SIZE | ZIP_STAT_COMP_SIZE | ZIP_STAT_COMP_METHOD | ZIP_STAT_ENCRYPTION_METHOD;

struct FileClose {
    void operator()(zip_file_t* file) const { zip_fclose(file); }
};

std::string quoted(std::string_view text) {
    return "«" + std::string(text) + "»";
}

// Password-protected Word documents and old .doc files are OLE compound files, not zip
// archives; saying so helps the user more than "damaged".
bool isCompoundFile(std::string_view bytes) {
    return bytes.starts_with("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1");
}

// Without ZIP_CHECKCONS: Word pads local headers with an extra field the central directory
// lacks, which that check takes for an inconsistency. Names, sizes and checksums are still
// checked here and while inflating.
zip_t* openArchive(std::string_view archive) {
    zip_error_t error;
    zip_error_init(&error);
    zip_source_t* source = zip_source_buffer_create(archive.data(), archive.size(), 0, &error);
    zip_t* zip = source ? zip_open_from_source(source, ZIP_RDONLY, &error) : nullptr;
    if (source && !zip) {
        zip_source_free(source);
    }
    zip_error_fini(&error);
    return zip;
}

bool tooCompressed(std::uint64_t size, std::uint64_t compressed, const PackageLimits& limits) {
    return size > limits.ratioExemptSize &&
           static_cast<double>(size) > static_cast<double>(compressed) * limits.maxCompressionRatio;
}

} // namespace

ZipReader::ZipReader(std::string_view archive, const PackageLimits& limits) : limits_(limits) {
    if (archive.empty()) {
        throw packageError::damaged("leere Datei");
    }
    if (isCompoundFile(archive)) {
        throw packageError::damaged("mit Kennwort geschützt oder im älteren Format .doc gespeichert");
    }
    zip_.reset(openArchive(archive));
    if (!zip_) {
        throw packageError::damaged("beschädigtes ZIP-Archiv");
    }
}

std::vector<ZipEntry> ZipReader::readAll() {
    const auto stats = checkedDirectory();
    std::vector<ZipEntry> entries;
    entries.reserve(stats.size());
    for (const auto& stat : stats) {
        entries.push_back({stat.name, inflate(stat), stat.index, stat.comp_method});
    }
    return entries;
}

// Everything the central directory can tell is judged before a single byte is inflated.
std::vector<zip_stat_t> ZipReader::checkedDirectory() {
    const auto count = zip_get_num_entries(zip_.get(), 0);
    if (count < 0) {
        throw packageError::damaged("beschädigtes ZIP-Archiv");
    }
    if (static_cast<std::uint64_t>(count) > limits_.maxEntries) {
        throw packageError::refused("mehr als " + std::to_string(limits_.maxEntries) + " Teile");
    }
    std::vector<zip_stat_t> stats(static_cast<std::size_t>(count));
    std::unordered_set<std::string> keys;
    for (zip_uint64_t index = 0; index < stats.size(); ++index) {
        auto& stat = stats[index];
        if (zip_stat_index(zip_.get(), index, 0, &stat) != 0 || (stat.valid & NeededStat) != NeededStat) {
            throw packageError::damaged("beschädigtes ZIP-Archiv");
        }
        checkEntry(stat);
        if (!keys.insert(partKey(stat.name)).second) {
            throw packageError::damaged("Teil " + quoted(stat.name) + " kommt mehrfach vor");
        }
    }
    return stats;
}

void ZipReader::checkEntry(const zip_stat_t& stat) {
    const std::string_view name = stat.name;
    if (!isSafeEntryName(name)) {
        throw packageError::refused("unzulässiger Name " + quoted(name) + " im ZIP-Archiv");
    }
    if (stat.encryption_method != ZIP_EM_NONE) {
        throw packageError::damaged("Teil " + quoted(name) + " ist verschlüsselt");
    }
    if (stat.comp_method != ZIP_CM_STORE && stat.comp_method != ZIP_CM_DEFLATE) {
        throw packageError::damaged("Teil " + quoted(name) +
                                    " ist mit einem unbekannten Verfahren komprimiert");
    }
    if (stat.size > limits_.maxEntrySize) {
        throw packageError::refused("Teil " + quoted(name) + " ist zu gross");
    }
    declaredTotal_ += stat.size;
    if (declaredTotal_ > limits_.maxTotalSize) {
        throw packageError::refused("die Teile sind zusammen zu gross");
    }
    if (tooCompressed(stat.size, stat.comp_size, limits_)) {
        throw packageError::refused("Teil " + quoted(name) + " ist ungewöhnlich stark komprimiert");
    }
}

// The declared size is not trusted: reading stops one byte past it, so a lying entry costs at
// most its declared size, which the directory check has already bounded.
std::string ZipReader::inflate(const zip_stat_t& stat) {
    std::unique_ptr<zip_file_t, FileClose> file(zip_fopen_index(zip_.get(), stat.index, 0));
    if (!file) {
        throw packageError::damaged("Teil " + quoted(stat.name) + " ist beschädigt");
    }
    const auto cap = std::min({stat.size, limits_.maxEntrySize, limits_.maxTotalSize});
    std::string bytes;
    bytes.reserve(static_cast<std::size_t>(cap));
    for (;;) {
        const auto old = bytes.size();
        const auto want = static_cast<std::size_t>(std::min<std::uint64_t>(ReadChunk, cap + 1 - old));
        bytes.resize(old + want);
        const auto got = zip_fread(file.get(), bytes.data() + old, want);
        if (got < 0) {
            throw packageError::damaged("Teil " + quoted(stat.name) + " ist beschädigt");
        }
        bytes.resize(old + static_cast<std::size_t>(got));
        if (got == 0) {
            break;
        }
        checkInflated(stat, bytes.size());
    }
    if (bytes.size() != stat.size) {
        throw packageError::damaged("Teil " + quoted(stat.name) + " ist unvollständig");
    }
    return bytes;
}

void ZipReader::checkInflated(const zip_stat_t& stat, std::uint64_t produced) const {
    if (produced > stat.size) {
        throw packageError::damaged("Teil " + quoted(stat.name) + " ist grösser als angegeben");
    }
    if (produced > limits_.maxEntrySize || tooCompressed(produced, stat.comp_size, limits_)) {
        throw packageError::refused("Teil " + quoted(stat.name) + " ist ungewöhnlich stark komprimiert");
    }
}

} // namespace wordbm::ooxml
