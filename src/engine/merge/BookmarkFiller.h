#pragma once

#include "engine/word/Forward.h"

#include <cstdint>
#include <functional>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

namespace wordbm {

class CSVfile;
class KnownFields;
class QRCoder;
class QRImage;
class SlipPort;

// Fills the engine bookmarks of one document from one data line of the control file: export
// fields typed as the file holds them, the QR code pasted as a picture, the QRCoder's texts, slip
// placeholders handed to the slip builder. One filler belongs to one thread; fillers of several
// threads share only the known-field list (read) and the slip builder.
class BookmarkFiller {
public:
    // Everything is borrowed and must outlive the filler. letEventsRun may be empty.
    BookmarkFiller(const KnownFields& fields, CSVfile& data, const QRCoder& coder, QRImage& image,
                   SlipPort* slip, std::function<void()> letEventsRun);

    // Fills every engine bookmark of `doc` (the active document of `word`) from data line `row`.
    // Bookmarks are filled in the collection's order; filling one removes the bookmarks inside it,
    // as Word does, and those are then passed over. A bookmark that cannot be filled is passed
    // over too, and the list says which and why, one line each.
    std::vector<std::string> fill(word::Application& word, word::Document& doc, std::int32_t row);
    // The same fill with `standIn(bookmark)` typed in place of every text the row would give, the
    // payment slip's values included; pictures, and what else the slip builder decides by the row,
    // come from `row` as usual. The slip's texts are not fitted into their boxes.
    std::vector<std::string> fill(word::Application& word, word::Document& doc, std::int32_t row,
                                  const std::function<std::string(const std::string&)>& standIn);

    // The text typed for `field` from data line `row`, as fill types it; for a payment-slip field
    // what the slip builder writes in place of a stand-in.
    std::string textOf(const std::string& field, std::int32_t row);
    // The PNG file of the QR code of data line `row` as fill pastes it; empty when it cannot be made.
    std::string codePicture(std::int32_t row);
    // Rows of the same shape differ in the payment slip only by the texts in place of the stand-ins.
    std::string slipShape(std::int32_t row) const;
    // The slip builder, null when slip fields are left alone.
    SlipPort* slip() const { return slip_; }
    const QRCoder& coder() const { return coder_; }

    // The fields whose text comes from the QR-bill data rather than from a column.
    static bool isQRField(std::string_view field);
    // The field puts the QR code's picture into the invoice.
    static bool isCodePicture(std::string_view field) { return field == "QRCode" || field == "ESQRQRCode"; }
    // Fields beginning with this belong to the payment slip.
    static constexpr std::string_view SlipPrefix = "ESQR";

    // Held while a picture goes through the process's one image slot, from encoding to pasting,
    // so that side-by-side invoices never paste each other's QR code.
    static std::mutex& imageSlotLock();

private:
    std::vector<std::string> fillAll(word::Application& word, word::Document& doc, std::int32_t row,
                                     const std::function<std::string(const std::string&)>* standIn);
    void fillOne(word::Application& word, word::Document& doc, const std::string& bookmark,
                 const std::string& field, std::int32_t row,
                 const std::function<std::string(const std::string&)>* standIn);
    void pasteQRCode(word::Selection& selection, std::int32_t row);
    static std::vector<std::string> bookmarksInside(word::Bookmark& bookmark);
    static std::vector<std::string> bookmarksWithin(word::Bookmark& bookmark);

    const KnownFields& fields_;
    CSVfile& data_;
    const QRCoder& coder_;
    QRImage& image_;
    SlipPort* slip_;
    std::function<void()> letEventsRun_;
};

} // namespace wordbm
