#pragma once

#include "engine/merge/ZipAssembler.h"
#include "engine/word/Forward.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace wordbm {

class BookmarkFiller;
class KnownFields;

// The working form made ready once per run for invoices that take text only. The form is filled
// once through the word processor with a stand-in typed into every bookmark, saved, and cut where
// the stand-ins landed. An invoice is then that saved form with the row's texts in their places,
// as the word processor would have typed them: the parts without a stand-in are copied compressed
// as they are, the others are joined from pieces compressed once and the row's texts stored.
// Never changed once made, so the threads of a run share one.
class PreparedForm {
public:
    // Null when a bookmark takes a picture or belongs to the payment slip, when the fill reports a
    // problem, or when a stand-in landed where a text cannot simply take its place. The stand-in
    // form is saved in `scratchFolder` for a moment.
    static std::unique_ptr<PreparedForm> make(word::Application& word, const std::string& workingForm,
                                              const KnownFields& fields, BookmarkFiller& filler,
                                              const std::string& scratchFolder);
    ~PreparedForm();

    // The field of each stand-in, in order: the texts that invoice() takes.
    const std::vector<std::string>& fields() const { return fields_; }

    // The invoice's package for these texts (as BookmarkFiller::textOf gives them, one per field);
    // nullopt when one of them needs the word processor: a line end, a tab, a control character,
    // or a blank at its edge where the text shares its run's text with the form.
    std::optional<std::string> invoice(const std::vector<std::string>& texts) const;

private:
    // A stretch of a part's XML between two stand-ins, compressed on its own and flushed to a
    // byte boundary, so the pieces of a part and the stored texts between them make one stream.
    struct Piece {
        std::string compressed;
        std::uint32_t crc = 0;
        std::uint64_t size = 0;
    };
    // Where a stand-in stood, and how the text around it must be written.
    struct Slot {
        std::size_t text = 0;
        // The stand-in was the whole of a w:t that the slot writes itself, with xml:space when
        // the text has blanks at its edge, as the word processor marks them.
        bool ownsElement = false;
        // The surrounding text keeps its blanks already; otherwise edge blanks cannot be placed.
        bool blanksKept = false;
    };
    // A part with stand-ins: pieces.size() == slots.size() + 1.
    struct Stitched {
        std::vector<Piece> pieces;
        std::vector<Slot> slots;
    };
    struct Entry {
        std::string name;
        ZipAssembler::Entry header;
        std::string raw;             // compressed data as saved, for a part without stand-ins
        std::optional<Stitched> cut; // for a part with stand-ins
    };

    PreparedForm() = default;
    bool read(const std::string& archive);
    bool cut(const std::string& xml, Stitched& stitched);
    bool addPiece(std::string_view text, Stitched& stitched);

    std::vector<std::string> fields_;
    std::vector<Entry> entries_;
    std::string finalBlock_; // ends a deflate stream
    std::size_t size_ = 0;   // of the saved form, to size an invoice's buffer
};

} // namespace wordbm
