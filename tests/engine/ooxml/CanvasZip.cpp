#include "CanvasZip.h"

#include <memory>
#include <stdexcept>
#include <zip.h>

namespace wordbm::ooxml::canvastest {

namespace {

struct ArchiveCloser {
    void operator()(zip_t* archive) const { zip_discard(archive); }
};

using Archive = std::unique_ptr<zip_t, ArchiveCloser>;

Archive open(const std::filesystem::path& file, int flags) {
    int error = 0;
    Archive archive(zip_open(file.c_str(), flags, &error));
    if (!archive) {
        throw std::runtime_error("cannot open zip " + file.string() + " (libzip error " +
                                 std::to_string(error) + ")");
    }
    return archive;
}

std::string entryBytes(zip_t* archive, zip_uint64_t index) {
    zip_stat_t stat;
    zip_stat_init(&stat);
    if (zip_stat_index(archive, index, 0, &stat) != 0) {
        throw std::runtime_error("cannot read zip entry");
    }
    zip_file_t* entry = zip_fopen_index(archive, index, 0);
    if (!entry) {
        throw std::runtime_error("cannot open zip entry");
    }
    std::string bytes(static_cast<std::size_t>(stat.size), '\0');
    const zip_int64_t read = zip_fread(entry, bytes.data(), stat.size);
    zip_fclose(entry);
    if (read < 0 || static_cast<zip_uint64_t>(read) != stat.size) {
        throw std::runtime_error("short zip entry");
    }
    return bytes;
}

} // namespace

CanvasZip CanvasZip::read(const std::filesystem::path& file) {
    const Archive archive = open(file, ZIP_RDONLY);
    CanvasZip zip;
    const zip_int64_t count = zip_get_num_entries(archive.get(), 0);
    for (zip_int64_t index = 0; index < count; ++index) {
        const auto at = static_cast<zip_uint64_t>(index);
        zip[zip_get_name(archive.get(), at, 0)] = entryBytes(archive.get(), at);
    }
    return zip;
}

void CanvasZip::write(const std::filesystem::path& file) const {
    Archive archive = open(file, ZIP_CREATE | ZIP_TRUNCATE);
    for (const auto& [name, bytes] : entries_) {
        // The buffers live in this object until zip_close has written them.
        zip_source_t* source = zip_source_buffer(archive.get(), bytes.data(), bytes.size(), 0);
        if (!source || zip_file_add(archive.get(), name.c_str(), source, ZIP_FL_ENC_UTF_8) < 0) {
            zip_source_free(source);
            throw std::runtime_error("cannot add " + name);
        }
    }
    if (zip_close(archive.get()) != 0) {
        throw std::runtime_error("cannot write " + file.string());
    }
    static_cast<void>(archive.release());
}

std::string& CanvasZip::operator[](const std::string& name) {
    for (auto& [key, bytes] : entries_) {
        if (key == name) {
            return bytes;
        }
    }
    return entries_.emplace_back(name, std::string()).second;
}

const std::string& CanvasZip::at(const std::string& name) const {
    for (const auto& [key, bytes] : entries_) {
        if (key == name) {
            return bytes;
        }
    }
    throw std::out_of_range("no zip entry " + name);
}

std::vector<std::string> CanvasZip::names() const {
    std::vector<std::string> all;
    for (const auto& entry : entries_) {
        all.push_back(entry.first);
    }
    return all;
}

} // namespace wordbm::ooxml::canvastest
