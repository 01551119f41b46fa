#include "engine/merge/PreparedForm.h"

#include "data/KnownFields.h"
#include "engine/merge/BookmarkFiller.h"
#include "engine/word/Application.h"
#include "engine/word/Bookmarks.h"
#include "engine/word/Document.h"
#include "engine/word/Documents.h"
#include "engine/word/WordConstants.h"
#include "support/HiddenTemporary.h"
#include "support/ReadFile.h"
#include "support/Strings.h"

#include <algorithm>
#include <cctype>
#include <ctime>
#include <exception>
#include <filesystem>
#include <map>
#include <zip.h>
#include <zlib.h>

namespace wordbm {

namespace {

// Typed into the bookmarks as the row's texts would be; a number after it says which.
constexpr std::string_view StandIn = "ZqWbmStandInZq";
constexpr std::string_view StandInEnd = "Zq";
constexpr std::string_view OwnText = "<w:t>";
constexpr std::string_view OwnTextEnd = "</w:t>";
constexpr std::string_view KeptText = "<w:t xml:space=\"preserve\">";
constexpr std::string_view KeepsBlanks = "xml:space=\"preserve\"";
constexpr std::size_t StoredBlockMax = 65535;
constexpr int PieceLevel = 6; // compressed once per run: the better ratio is worth its time
constexpr std::size_t SavedFormLimit = std::size_t{1} << 30;

struct ZipDiscard {
    void operator()(zip_t* zip) const { zip_discard(zip); }
};

struct ZipFileClose {
    void operator()(zip_file_t* file) const { zip_fclose(file); }
};

std::string standIn(std::size_t index) {
    return std::string(StandIn) + std::to_string(index) + std::string(StandInEnd);
}

bool takesText(const std::string& field) {
    return !BookmarkFiller::isCodePicture(field) && !field.starts_with(BookmarkFiller::SlipPrefix);
}

bool endsWithIgnoringCase(std::string_view name, std::string_view end) {
    return name.size() >= end.size() &&
           std::equal(end.begin(), end.end(), name.end() - static_cast<std::ptrdiff_t>(end.size()),
                      [](char a, char b) { return std::tolower(static_cast<unsigned char>(a)) == b; });
}

bool mayHoldText(std::string_view name) {
    return endsWithIgnoringCase(name, ".xml") || endsWithIgnoringCase(name, ".rels");
}

// Typed, these would become paragraphs, tabs and breaks, or be dropped; an empty text leaves no
// w:t at all.
bool plain(std::string_view text) {
    return !text.empty() && std::none_of(text.begin(), text.end(),
                                         [](char c) { return static_cast<unsigned char>(c) < 0x20; });
}

bool blankAtEdge(std::string_view text) {
    return text.front() == ' ' || text.back() == ' ';
}

// One deflate stream of its own, ended by `flush`: Z_SYNC_FLUSH leaves it open at a byte
// boundary, so what follows may be a stored block or another such piece.
bool deflated(std::string_view text, int flush, std::string& out) {
    z_stream stream{};
    if (deflateInit2(&stream, PieceLevel, Z_DEFLATED, -MAX_WBITS, 8, Z_DEFAULT_STRATEGY) != Z_OK) {
        return false;
    }
    out.resize(deflateBound(&stream, static_cast<uLong>(text.size())) + 16);
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(text.data()));
    stream.avail_in = static_cast<uInt>(text.size());
    stream.next_out = reinterpret_cast<Bytef*>(out.data());
    stream.avail_out = static_cast<uInt>(out.size());
    const int result = deflate(&stream, flush);
    const bool done =
        (result == Z_OK || result == Z_STREAM_END) && stream.avail_in == 0 && stream.avail_out > 0;
    out.resize(out.size() - stream.avail_out);
    deflateEnd(&stream);
    return done;
}

// Stored blocks need no compressor: a header and the bytes as they are.
void appendStored(ZipAssembler& zip, std::string_view bytes) {
    while (!bytes.empty()) {
        const auto length = static_cast<std::uint16_t>(std::min(bytes.size(), StoredBlockMax));
        const auto inverse = static_cast<std::uint16_t>(~length);
        const char header[5] = {0, static_cast<char>(length & 0xff), static_cast<char>(length >> 8),
                                static_cast<char>(inverse & 0xff), static_cast<char>(inverse >> 8)};
        zip.append(std::string_view(header, sizeof header));
        zip.append(bytes.substr(0, length));
        bytes.remove_prefix(length);
    }
}

void setDosTime(std::time_t time, ZipAssembler::Entry& entry) {
    std::tm local{};
    if (!localtime_r(&time, &local) || local.tm_year < 80) {
        entry.dosTime = 0;
        entry.dosDate = (1 << 5) | 1; // 1 January 1980
        return;
    }
    entry.dosTime =
        static_cast<std::uint16_t>((local.tm_hour << 11) | (local.tm_min << 5) | (local.tm_sec / 2));
    entry.dosDate =
        static_cast<std::uint16_t>(((local.tm_year - 80) << 9) | ((local.tm_mon + 1) << 5) | local.tm_mday);
}

std::optional<std::string> entryBytes(zip_t* zip, zip_uint64_t index, zip_flags_t flags, zip_uint64_t size) {
    std::unique_ptr<zip_file_t, ZipFileClose> file(zip_fopen_index(zip, index, flags));
    if (!file) {
        return std::nullopt;
    }
    std::string bytes(size, '\0');
    const zip_int64_t got = size == 0 ? 0 : zip_fread(file.get(), bytes.data(), size);
    if (got < 0 || static_cast<zip_uint64_t>(got) != size) {
        return std::nullopt;
    }
    return bytes;
}

bool onlyTextFields(word::Document& doc, const KnownFields& fields) {
    const word::BookmarksPtr bookmarks = doc.Bookmarks();
    const int count = bookmarks->Count();
    for (int i = 1; i <= count; ++i) {
        if (!takesText(fields.BookmarkFieldGet(bookmarks->Item(i)->Name()))) {
            return false;
        }
    }
    return true;
}

} // namespace

PreparedForm::~PreparedForm() = default;

std::unique_ptr<PreparedForm> PreparedForm::make(word::Application& word, const std::string& workingForm,
                                                 const KnownFields& fields, BookmarkFiller& filler,
                                                 const std::string& scratchFolder) {
    std::unique_ptr<PreparedForm> form(new PreparedForm());
    std::string archive;
    const std::string scratch = HiddenTemporary::besideIn(scratchFolder);
    try {
        const word::DocumentPtr doc = word.Documents()->Open(workingForm);
        std::map<std::string, std::size_t> slots;
        const auto standInFor = [&](const std::string& bookmark) {
            const auto [found, added] = slots.try_emplace(bookmark, form->fields_.size());
            if (added) {
                form->fields_.push_back(fields.BookmarkFieldGet(bookmark));
            }
            return standIn(found->second);
        };
        // Row 1 is never read: every bookmark takes a stand-in.
        const bool filled = onlyTextFields(*doc, fields) && filler.fill(word, *doc, 1, standInFor).empty();
        if (filled) {
            doc->SaveAs2(scratch);
        }
        doc->Close(word::wd::wdDoNotSaveChanges);
        if (!filled) {
            return nullptr;
        }
        ReadFile file(scratch);
        const bool read = !file.error() && file.readAll(archive, SavedFormLimit);
        std::error_code ignored;
        std::filesystem::remove(scratch, ignored);
        if (!read) {
            return nullptr;
        }
    } catch (const std::exception&) {
        std::error_code ignored;
        std::filesystem::remove(scratch, ignored);
        return nullptr;
    }
    if (!form->read(archive)) {
        return nullptr;
    }
    return form;
}

bool PreparedForm::read(const std::string& archive) {
    if (!deflated({}, Z_FINISH, finalBlock_)) {
        return false;
    }
    size_ = archive.size();
    zip_error_t error;
    zip_error_init(&error);
    zip_source_t* source = zip_source_buffer_create(archive.data(), archive.size(), 0, &error);
    std::unique_ptr<zip_t, ZipDiscard> zip(source ? zip_open_from_source(source, ZIP_RDONLY, &error)
                                                  : nullptr);
    if (source && !zip) {
        zip_source_free(source);
    }
    zip_error_fini(&error);
    const zip_int64_t count = zip ? zip_get_num_entries(zip.get(), 0) : -1;
    if (count < 0 || count > 0xffff) {
        return false;
    }
    for (zip_uint64_t index = 0; index < static_cast<zip_uint64_t>(count); ++index) {
        zip_stat_t stat;
        constexpr zip_uint64_t Needed =
            ZIP_STAT_NAME | ZIP_STAT_SIZE | ZIP_STAT_COMP_SIZE | ZIP_STAT_COMP_METHOD | ZIP_STAT_CRC;
        if (zip_stat_index(zip.get(), index, 0, &stat) != 0 || (stat.valid & Needed) != Needed ||
            (stat.comp_method != ZIP_CM_STORE && stat.comp_method != ZIP_CM_DEFLATE) ||
            stat.size > 0xffffffffu || stat.comp_size > 0xffffffffu) {
            return false;
        }
        Entry& entry = entries_.emplace_back();
        entry.name = stat.name;
        entry.header.method = static_cast<std::uint16_t>(stat.comp_method);
        entry.header.crc = stat.crc;
        entry.header.size = stat.size;
        setDosTime((stat.valid & ZIP_STAT_MTIME) ? stat.mtime : 0, entry.header);
        const auto raw = entryBytes(zip.get(), index, ZIP_FL_COMPRESSED, stat.comp_size);
        if (!raw) {
            return false;
        }
        entry.raw = *raw;
        if (mayHoldText(entry.name)) {
            const auto text = entryBytes(zip.get(), index, 0, stat.size);
            if (!text) {
                return false;
            }
            if (text->find(StandIn) != std::string::npos) {
                entry.cut.emplace();
                entry.header.method = ZIP_CM_DEFLATE;
                entry.raw.clear();
                if (!cut(*text, *entry.cut)) {
                    return false;
                }
            }
        }
    }
    // The names point into the entries, which stay where they are from here on.
    for (Entry& entry : entries_) {
        entry.header.name = entry.name;
    }
    return true;
}

bool PreparedForm::cut(const std::string& xml, Stitched& stitched) {
    std::size_t from = 0;
    for (auto at = xml.find(StandIn); at != std::string::npos; at = xml.find(StandIn, from)) {
        const auto digits = at + StandIn.size();
        auto end = digits;
        while (end < xml.size() && std::isdigit(static_cast<unsigned char>(xml[end]))) {
            ++end;
        }
        if (end == digits || end - digits > 9 || xml.compare(end, StandInEnd.size(), StandInEnd) != 0) {
            return false;
        }
        Slot slot;
        slot.text = std::stoul(xml.substr(digits, end - digits));
        const auto after = end + StandInEnd.size();
        // Only element text takes a text as it is; an attribute would be escaped otherwise.
        const auto open = xml.rfind('<', at);
        const auto close = xml.rfind('>', at);
        const auto nextOpen = xml.find('<', after);
        const auto nextClose = xml.find('>', after);
        if (slot.text >= fields_.size() || close == std::string::npos || open == std::string::npos ||
            open > close || nextOpen == std::string::npos || nextClose < nextOpen) {
            return false;
        }
        auto pieceEnd = at;
        if (at - from >= OwnText.size() && xml.compare(at - OwnText.size(), OwnText.size(), OwnText) == 0 &&
            xml.compare(after, OwnTextEnd.size(), OwnTextEnd) == 0) {
            slot.ownsElement = true;
            pieceEnd = at - OwnText.size();
        } else {
            slot.blanksKept =
                std::string_view(xml).substr(open, close - open).find(KeepsBlanks) != std::string::npos;
        }
        if (!addPiece(std::string_view(xml).substr(from, pieceEnd - from), stitched)) {
            return false;
        }
        stitched.slots.push_back(slot);
        from = after;
    }
    return addPiece(std::string_view(xml).substr(from), stitched);
}

bool PreparedForm::addPiece(std::string_view text, Stitched& stitched) {
    Piece& piece = stitched.pieces.emplace_back();
    piece.size = text.size();
    piece.crc = static_cast<std::uint32_t>(
        crc32(0L, reinterpret_cast<const Bytef*>(text.data()), static_cast<uInt>(text.size())));
    return text.empty() || deflated(text, Z_SYNC_FLUSH, piece.compressed);
}

std::optional<std::string> PreparedForm::invoice(const std::vector<std::string>& texts) const {
    if (texts.size() != fields_.size() || !std::all_of(texts.begin(), texts.end(), plain)) {
        return std::nullopt;
    }
    ZipAssembler zip(size_ + 4096);
    std::vector<std::string> written;
    for (const Entry& entry : entries_) {
        if (!entry.cut) {
            zip.begin(entry.header);
            zip.append(entry.raw);
            continue;
        }
        const Stitched& stitched = *entry.cut;
        // The header needs the checksum and size of the whole part before its data.
        written.assign(stitched.slots.size(), {});
        ZipAssembler::Entry header = entry.header;
        uLong crc = crc32(0L, Z_NULL, 0);
        header.size = 0;
        for (std::size_t i = 0; i < stitched.pieces.size(); ++i) {
            const Piece& piece = stitched.pieces[i];
            crc = crc32_combine(crc, piece.crc, static_cast<z_off_t>(piece.size));
            header.size += piece.size;
            if (i == stitched.slots.size()) {
                break;
            }
            const Slot& slot = stitched.slots[i];
            const std::string& text = texts[slot.text];
            std::string& out = written[i];
            if (slot.ownsElement) {
                out = blankAtEdge(text) ? KeptText : OwnText;
            } else if (blankAtEdge(text) && !slot.blanksKept) {
                return std::nullopt;
            }
            appendXmlText(out, text);
            crc = crc32(crc, reinterpret_cast<const Bytef*>(out.data()), static_cast<uInt>(out.size()));
            header.size += out.size();
        }
        header.crc = static_cast<std::uint32_t>(crc);
        zip.begin(header);
        for (std::size_t i = 0; i < stitched.pieces.size(); ++i) {
            zip.append(stitched.pieces[i].compressed);
            if (i < written.size()) {
                appendStored(zip, written[i]);
            }
        }
        zip.append(finalBlock_);
    }
    return zip.finish();
}

} // namespace wordbm
