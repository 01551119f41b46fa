#include "engine/ooxml/ZipRewriter.h"

#include "engine/ooxml/PackageError.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace wordbm::ooxml {

namespace {

constexpr std::size_t ReadChunk = 64 * 1024;

std::string zipMessage(zip_error_t* error) {
    return std::string("ZIP: ") + zip_error_strerror(error);
}

// libzip frees the data of a buffer source once it has written to it, so it gets a copy it owns.
zip_source_t* ownedCopy(std::string_view bytes, zip_error_t* error) {
    void* copy = std::malloc(std::max<std::size_t>(bytes.size(), 1));
    if (!copy) {
        zip_error_set(error, ZIP_ER_MEMORY, 0);
        return nullptr;
    }
    std::memcpy(copy, bytes.data(), bytes.size());
    zip_source_t* source = zip_source_buffer_create(copy, bytes.size(), 1, error);
    if (!source) {
        std::free(copy);
    }
    return source;
}

} // namespace

ZipRewriter::ZipRewriter(std::string_view original) {
    zip_error_t error;
    zip_error_init(&error);
    archive_ = ownedCopy(original, &error);
    zip_ = archive_ ? zip_open_from_source(archive_, 0, &error) : nullptr;
    if (zip_) {
        zip_source_keep(archive_);
    } else if (archive_) {
        zip_source_free(archive_);
        archive_ = nullptr;
    }
    const auto message = zipMessage(&error);
    zip_error_fini(&error);
    if (!zip_) {
        throw packageError::unsaved({}, message);
    }
}

ZipRewriter::~ZipRewriter() {
    if (zip_) {
        zip_discard(zip_);
    }
    if (archive_) {
        zip_source_free(archive_);
    }
}

void ZipRewriter::fail() const {
    throw packageError::unsaved({}, zipMessage(zip_get_error(zip_)));
}

zip_source_t* ZipRewriter::keep(std::string bytes) {
    const auto& kept = pending_.emplace_back(std::move(bytes));
    zip_source_t* source = zip_source_buffer(zip_, kept.data(), kept.size(), 0);
    if (!source) {
        fail();
    }
    return source;
}

void ZipRewriter::replace(std::uint64_t index, std::string bytes, std::int32_t method) {
    // The rewritten entry keeps the original's time stamp rather than taking the clock's.
    zip_stat_t original;
    const bool knowsTime =
        zip_stat_index(zip_, index, 0, &original) == 0 && (original.valid & ZIP_STAT_MTIME);
    zip_source_t* source = keep(std::move(bytes));
    if (zip_file_replace(zip_, index, source, 0) != 0) {
        zip_source_free(source);
        fail();
    }
    if (zip_set_file_compression(zip_, index, method, 0) != 0 ||
        (knowsTime && zip_file_set_mtime(zip_, index, original.mtime, 0) != 0)) {
        fail();
    }
}

void ZipRewriter::remove(std::uint64_t index) {
    if (zip_delete(zip_, index) != 0) {
        fail();
    }
}

void ZipRewriter::add(std::string_view name, std::string bytes) {
    zip_source_t* source = keep(std::move(bytes));
    const auto index = zip_file_add(zip_, std::string(name).c_str(), source, ZIP_FL_ENC_UTF_8);
    if (index < 0) {
        zip_source_free(source);
        fail();
    }
    if (zip_set_file_compression(zip_, static_cast<zip_uint64_t>(index), ZIP_CM_DEFLATE, 0) != 0) {
        fail();
    }
}

std::string ZipRewriter::finish() {
    if (zip_close(zip_) != 0) {
        fail();
    }
    zip_ = nullptr;
    std::string result;
    if (zip_source_open(archive_) != 0) {
        throw packageError::unsaved({}, zipMessage(zip_source_error(archive_)));
    }
    for (;;) {
        const auto old = result.size();
        result.resize(old + ReadChunk);
        const auto got = zip_source_read(archive_, result.data() + old, ReadChunk);
        result.resize(old + static_cast<std::size_t>(std::max<zip_int64_t>(got, 0)));
        if (got <= 0) {
            zip_source_close(archive_);
            if (got < 0) {
                throw packageError::unsaved({}, zipMessage(zip_source_error(archive_)));
            }
            return result;
        }
    }
}

} // namespace wordbm::ooxml
