#pragma once

#include "engine/merge/ZipAssembler.h"
#include "engine/word/Forward.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace wordbm {

class BookmarkFiller;
class KnownFields;
class SlipFitCheck;

// The working form made ready once per run for invoices made without the word processor. The form
// is filled once through the word processor with a stand-in typed into every text bookmark and
// every value of the payment slip, saved, and cut where the stand-ins landed. An invoice is then
// that saved form with the row's texts in their places, as the word processor would have typed
// them, and the row's QR code in place of the picture pasted for the form: the parts without a
// stand-in are copied compressed as they are, the others are joined from pieces compressed once
// and the row's texts stored. Never changed once made, so the threads of a run share one.
//
// What the payment slip shows besides its values (headings, marks, emptied placeholders) depends
// on the row; a form prepared with one row serves the rows of the same slip shape.
class PreparedForm {
public:
    // Null when the fill reports a problem or a stand-in landed where a text cannot simply take its
    // place. The slip and the QR code are those of data line `row`. The stand-in form is saved in
    // `scratchFolder` for a moment.
    static std::unique_ptr<PreparedForm> make(word::Application& word, const std::string& workingForm,
                                              const KnownFields& fields, BookmarkFiller& filler,
                                              const std::string& scratchFolder, std::int32_t row = 1);
    ~PreparedForm();

    // The field of each stand-in, in order: the texts that invoice() takes.
    const std::vector<std::string>& fields() const { return fields_; }
    // BookmarkFiller::slipShape of the rows this form serves; empty when it serves every row,
    // having no payment slip that the merge fills.
    const std::string& shape() const { return shape_; }
    bool serves(const std::string& shape) const { return !slip_ || shape == shape_; }

    // The invoice's package for data line `row`, its texts, QR code and slip taken from `filler`;
    // nullopt when the row needs the word processor: a slip of another shape, a slip text the
    // boxes would have to shorten, a text that invoice(texts) cannot take.
    std::optional<std::string> invoiceOf(BookmarkFiller& filler, std::int32_t row) const;

    // The invoice's package for these texts (as BookmarkFiller::textOf gives them, one per field)
    // of a form without QR code and payment slip; nullopt when one of them needs the word
    // processor: a paragraph end, a tab, a control character, a line break where the text shares
    // its run's text with the form, or a blank at its edge there.
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
        // the text has blanks at its edge, as the word processor marks them, and a w:br for each
        // line break.
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
        bool codePicture = false;    // the QR code, replaced by the row's
    };

    PreparedForm() = default;
    bool fill(word::Application& word, word::Document& doc, const KnownFields& fields, BookmarkFiller& filler,
              std::int32_t row);
    bool read(const std::string& archive);
    bool cut(const std::string& xml, Stitched& stitched);
    bool addPiece(std::string_view text, Stitched& stitched);
    std::optional<std::string> joined(const std::vector<std::string>& texts, std::string_view picture) const;
    // False when a text cannot take the slot's place.
    static bool written(const Slot& slot, std::string_view text, std::string& out);

    std::vector<std::string> fields_;
    bool slip_ = false;
    std::string shape_;
    std::string picture_;             // the QR code pasted for the form; empty when it has none
    std::set<std::string> formParts_; // of the form before the fill, when it takes a QR code
    std::unique_ptr<SlipFitCheck> fitCheck_;
    std::vector<Entry> entries_;
    std::string finalBlock_; // ends a deflate stream
    std::size_t size_ = 0;   // of the saved form, to size an invoice's buffer
};

} // namespace wordbm
