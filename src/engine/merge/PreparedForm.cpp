#include "engine/merge/PreparedForm.h"

#include "data/KnownFields.h"
#include "engine/merge/BookmarkFiller.h"
#include "engine/ports/SlipPort.h"
#include "engine/word/Application.h"
#include "engine/word/Bookmarks.h"
#include "engine/word/Document.h"
#include "engine/word/Documents.h"
#include "engine/word/WordConstants.h"
#include "support/Folders.h"
#include "support/HiddenTemporary.h"
#include "support/ReadFile.h"
#include "support/Strings.h"

#include <algorithm>
#include <cctype>
#include <ctime>
#include <exception>
#include <filesystem>
#include <map>
#include <set>
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

bool endsWithIgnoringCase(std::string_view name, std::string_view end) {
    return name.size() >= end.size() &&
           std::equal(end.begin(), end.end(), name.end() - static_cast<std::ptrdiff_t>(end.size()),
                      [](char a, char b) { return std::tolower(static_cast<unsigned char>(a)) == b; });
}

bool mayHoldText(std::string_view name) {
    return endsWithIgnoringCase(name, ".xml") || endsWithIgnoringCase(name, ".rels");
}

constexpr std::string_view LineBreak = "<w:br/>";
constexpr char LineBreakCharacter = '\v';

// Typed, these would become paragraphs and tabs, or be dropped; an empty text leaves no w:t at
// all. Line breaks are the slot's to judge.
bool plain(std::string_view text) {
    return !text.empty() && std::none_of(text.begin(), text.end(), [](char c) {
        return static_cast<unsigned char>(c) < 0x20 && c != LineBreakCharacter;
    });
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

struct FieldsFound {
    bool slip = false;
    bool codePicture = false;
};

// Without a slip builder the slip's placeholders, its QR code among them, are left as they are.
FieldsFound fieldsOf(word::Document& doc, const KnownFields& fields, bool slipBuilder) {
    FieldsFound found;
    const word::BookmarksPtr bookmarks = doc.Bookmarks();
    const int count = bookmarks->Count();
    for (int i = 1; i <= count; ++i) {
        const std::string field = fields.BookmarkFieldGet(bookmarks->Item(i)->Name());
        const bool slip = slipBuilder && field.starts_with(BookmarkFiller::SlipPrefix);
        found.slip = found.slip || slip;
        found.codePicture = found.codePicture || (BookmarkFiller::isCodePicture(field) &&
                                                  (slip || !field.starts_with(BookmarkFiller::SlipPrefix)));
    }
    return found;
}

bool isPicture(std::string_view name) {
    return endsWithIgnoringCase(name, ".png");
}

// The parts of the form as it was before the fill; empty when it cannot be read.
std::set<std::string> partNames(const std::string& path) {
    int error = 0;
    std::unique_ptr<zip_t, ZipDiscard> zip(zip_open(path.c_str(), ZIP_RDONLY, &error));
    std::set<std::string> names;
    const zip_int64_t count = zip ? zip_get_num_entries(zip.get(), 0) : 0;
    for (zip_int64_t index = 0; index < count; ++index) {
        if (const char* name = zip_get_name(zip.get(), static_cast<zip_uint64_t>(index), 0)) {
            names.insert(name);
        }
    }
    return names;
}

} // namespace

PreparedForm::~PreparedForm() = default;

std::unique_ptr<PreparedForm> PreparedForm::make(word::Application& word, const std::string& workingForm,
                                                 const KnownFields& fields, BookmarkFiller& filler,
                                                 const std::string& scratchFolder, std::int32_t row) {
    std::unique_ptr<PreparedForm> form(new PreparedForm());
    std::string archive;
    const std::string scratch = HiddenTemporary::besideIn(scratchFolder);
    try {
        const word::DocumentPtr doc = word.Documents()->Open(workingForm);
        const bool filled = form->fill(word, *doc, fields, filler, row);
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
    // A picture the form brought along stays, whatever it shows.
    if (!form->picture_.empty()) {
        form->formParts_ = partNames(nativePath(workingForm));
        if (form->formParts_.empty()) {
            return nullptr;
        }
    }
    if (!form->read(archive)) {
        return nullptr;
    }
    return form;
}

bool PreparedForm::fill(word::Application& word, word::Document& doc, const KnownFields& fields,
                        BookmarkFiller& filler, std::int32_t row) {
    const FieldsFound present = fieldsOf(doc, fields, filler.slip() != nullptr);
    if (present.codePicture) {
        picture_ = filler.codePicture(row);
        if (picture_.empty()) {
            return false;
        }
    }
    slip_ = present.slip;
    shape_ = slip_ ? filler.slipShape(row) : std::string();
    std::map<std::string, std::size_t> slots;
    const auto standInFor = [&](const std::string& bookmark) {
        const auto [found, added] = slots.try_emplace(bookmark, fields_.size());
        if (added) {
            fields_.push_back(fields.BookmarkFieldGet(bookmark));
        }
        return standIn(found->second);
    };
    // Text fields never read the row: they all take stand-ins.
    if (!filler.fill(word, doc, row, standInFor).empty()) {
        return false;
    }
    if (present.slip) {
        std::vector<std::string> standIns;
        for (std::size_t i = 0; i < fields_.size(); ++i) {
            standIns.push_back(standIn(i));
        }
        fitCheck_ = filler.slip()->FitCheck(doc, standIns);
        return fitCheck_ != nullptr;
    }
    return true;
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
        if (!picture_.empty() && isPicture(entry.name) && stat.size == picture_.size() &&
            !formParts_.contains(entry.name)) {
            const auto bytes = entryBytes(zip.get(), index, 0, stat.size);
            entry.codePicture = bytes && *bytes == picture_;
        }
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
    return picture_.empty() || std::any_of(entries_.begin(), entries_.end(),
                                           [](const Entry& entry) { return entry.codePicture; });
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
        auto next = after;
        if (at - from >= OwnText.size() && xml.compare(at - OwnText.size(), OwnText.size(), OwnText) == 0 &&
            xml.compare(after, OwnTextEnd.size(), OwnTextEnd) == 0) {
            slot.ownsElement = true;
            pieceEnd = at - OwnText.size();
            next = after + OwnTextEnd.size();
        } else {
            slot.blanksKept =
                std::string_view(xml).substr(open, close - open).find(KeepsBlanks) != std::string::npos;
        }
        if (!addPiece(std::string_view(xml).substr(from, pieceEnd - from), stitched)) {
            return false;
        }
        stitched.slots.push_back(slot);
        from = next;
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

std::optional<std::string> PreparedForm::invoiceOf(BookmarkFiller& filler, std::int32_t row) const {
    if (slip_ && filler.slipShape(row) != shape_) {
        return std::nullopt;
    }
    std::vector<std::string> texts;
    texts.reserve(fields_.size());
    for (const std::string& field : fields_) {
        texts.push_back(filler.textOf(field, row));
    }
    if (fitCheck_ && !fitCheck_->LeavesAlone(texts, filler.coder(), row)) {
        return std::nullopt;
    }
    const std::string picture = picture_.empty() ? std::string() : filler.codePicture(row);
    if (!picture_.empty() && picture.empty()) {
        return std::nullopt;
    }
    return joined(texts, picture);
}

std::optional<std::string> PreparedForm::invoice(const std::vector<std::string>& texts) const {
    if (fitCheck_ || !picture_.empty()) {
        return std::nullopt;
    }
    return joined(texts, {});
}

bool PreparedForm::written(const Slot& slot, std::string_view text, std::string& out) {
    if (!slot.ownsElement) {
        if (text.find(LineBreakCharacter) != std::string_view::npos ||
            (blankAtEdge(text) && !slot.blanksKept)) {
            return false;
        }
        appendXmlText(out, text);
        return true;
    }
    // As the word processor types it: a w:t for each stretch between line breaks, none for an
    // empty one.
    for (std::size_t from = 0;;) {
        const std::size_t at = std::min(text.find(LineBreakCharacter, from), text.size());
        const std::string_view line = text.substr(from, at - from);
        if (!line.empty()) {
            out += blankAtEdge(line) ? KeptText : OwnText;
            appendXmlText(out, line);
            out += OwnTextEnd;
        }
        if (at == text.size()) {
            return true;
        }
        out += LineBreak;
        from = at + 1;
    }
}

std::optional<std::string> PreparedForm::joined(const std::vector<std::string>& texts,
                                                std::string_view picture) const {
    if (texts.size() != fields_.size() || !std::all_of(texts.begin(), texts.end(), plain)) {
        return std::nullopt;
    }
    ZipAssembler zip(size_ + picture.size() + 4096);
    std::vector<std::string> stored;
    for (const Entry& entry : entries_) {
        if (entry.codePicture) {
            // A PNG is compressed already; stored, it costs no compressor.
            ZipAssembler::Entry header = entry.header;
            header.method = ZIP_CM_STORE;
            header.size = picture.size();
            header.crc = static_cast<std::uint32_t>(
                crc32(0L, reinterpret_cast<const Bytef*>(picture.data()), static_cast<uInt>(picture.size())));
            zip.begin(header);
            zip.append(picture);
            continue;
        }
        if (!entry.cut) {
            zip.begin(entry.header);
            zip.append(entry.raw);
            continue;
        }
        const Stitched& stitched = *entry.cut;
        // The header needs the checksum and size of the whole part before its data.
        stored.assign(stitched.slots.size(), {});
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
            std::string& out = stored[i];
            if (!written(stitched.slots[i], texts[stitched.slots[i].text], out)) {
                return std::nullopt;
            }
            crc = crc32(crc, reinterpret_cast<const Bytef*>(out.data()), static_cast<uInt>(out.size()));
            header.size += out.size();
        }
        header.crc = static_cast<std::uint32_t>(crc);
        zip.begin(header);
        for (std::size_t i = 0; i < stitched.pieces.size(); ++i) {
            zip.append(stitched.pieces[i].compressed);
            if (i < stored.size()) {
                appendStored(zip, stored[i]);
            }
        }
        zip.append(finalBlock_);
    }
    return zip.finish();
}

} // namespace wordbm
