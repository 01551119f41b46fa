#include "engine/merge/BookmarkFiller.h"

#include "data/CSVfile.h"
#include "data/KnownFields.h"
#include "engine/ports/SlipPort.h"
#include "engine/word/Application.h"
#include "engine/word/AutomationError.h"
#include "engine/word/Bookmarks.h"
#include "engine/word/Document.h"
#include "engine/word/Range.h"
#include "engine/word/Selection.h"
#include "qrbill/QRCoder.h"
#include "qrbill/QRImage.h"

#include <algorithm>
#include <array>
#include <exception>

namespace wordbm {

namespace {

constexpr std::array<std::string_view, 6> CoderTexts{"Receiver", "ReceiverFinal", "ReceiverBlock",
                                                     "Sender",   "Amount",        "Currency"};

// The payload separates its elements by LF; typed, every line end becomes a paragraph.
std::string withCrLf(const std::string& text) {
    std::string result;
    result.reserve(text.size() + 40);
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\n' && (i == 0 || text[i - 1] != '\r')) {
            result += '\r';
        }
        result += text[i];
    }
    return result;
}

// Typing empty text would leave the bookmark's placeholder in the invoice.
std::string typeable(std::string text) {
    return text.empty() ? std::string(" ") : text;
}

std::vector<std::string> bookmarkNames(word::Document& doc) {
    const word::BookmarksPtr bookmarks = doc.Bookmarks();
    const int count = bookmarks->Count();
    std::vector<std::string> names;
    names.reserve(static_cast<std::size_t>(count));
    for (int i = 1; i <= count; ++i) {
        names.push_back(bookmarks->Item(i)->Name());
    }
    return names;
}

bool stillThere(word::Document& doc, const std::string& name) {
    try {
        return doc.Bookmarks()->Exists(name);
    } catch (const std::exception&) {
        return true; // the fill says what is wrong
    }
}

void setScreenUpdating(word::Application& word, bool updating) {
    try {
        word.ScreenUpdating(updating);
    } catch (const std::exception&) {
        // Only the speed of a visible word processor depends on it.
    }
}

} // namespace

BookmarkFiller::BookmarkFiller(const KnownFields& fields, CSVfile& data, const QRCoder& coder, QRImage& image,
                               SlipPort* slip, std::function<void()> letEventsRun)
    : fields_(fields), data_(data), coder_(coder), image_(image), slip_(slip),
      letEventsRun_(std::move(letEventsRun)) {}

std::mutex& BookmarkFiller::imageSlotLock() {
    static std::mutex lock;
    return lock;
}

bool BookmarkFiller::isQRField(std::string_view field) {
    return field == "QRCode" || field == "QRText" ||
           std::find(CoderTexts.begin(), CoderTexts.end(), field) != CoderTexts.end();
}

std::vector<std::string> BookmarkFiller::fill(word::Application& word, word::Document& doc,
                                              std::int32_t row) {
    return fillAll(word, doc, row, nullptr);
}

std::vector<std::string> BookmarkFiller::fill(word::Application& word, word::Document& doc, std::int32_t row,
                                              const std::function<std::string(const std::string&)>& standIn) {
    return fillAll(word, doc, row, &standIn);
}

std::vector<std::string>
BookmarkFiller::fillAll(word::Application& word, word::Document& doc, std::int32_t row,
                        const std::function<std::string(const std::string&)>* standIn) {
    std::vector<std::string> problems;
    setScreenUpdating(word, false);
    std::vector<std::string> names;
    try {
        names = bookmarkNames(doc);
    } catch (const std::exception& failure) {
        problems.push_back(std::string("Textmarken: ") + failure.what());
    }
    // In the collection's order, as Word walks it: a bookmark inside another one that was filled
    // before it went with the container's text, and the container's value stands. Only this loop
    // edits the document, so a bookmark missing at its turn is one of those.
    bool slipFilled = false;
    for (const std::string& name : names) {
        const std::string field = fields_.BookmarkFieldGet(name);
        if (field.empty() || !stillThere(doc, name)) {
            continue;
        }
        slipFilled = slipFilled || (slip_ && field.starts_with(SlipPrefix));
        try {
            fillOne(word, doc, name, field, row, standIn);
        } catch (const std::exception& failure) {
            problems.push_back("Textmarke " + name + ": " + failure.what());
        }
    }
    // With stand-ins in the boxes there is nothing to fit; each row's texts are judged on their own.
    if (slipFilled && !standIn) {
        try {
            slip_->Finish(doc, coder_, row);
        } catch (const std::exception& failure) {
            problems.push_back(failure.what());
        }
    }
    setScreenUpdating(word, true);
    return problems;
}

void BookmarkFiller::fillOne(word::Application& word, word::Document& doc, const std::string& bookmark,
                             const std::string& field, std::int32_t row,
                             const std::function<std::string(const std::string&)>* standIn) {
    if (field == KnownFields::Separator) {
        return;
    }
    const bool slip = field.starts_with(SlipPrefix);
    if (slip && !slip_) {
        return;
    }
    const word::BookmarkPtr target = doc.Bookmarks()->Item(bookmark);
    target->Select();
    if (letEventsRun_) {
        letEventsRun_();
    }
    if (slip) {
        // The slip may paste pictures of its own.
        const std::lock_guard lock(imageSlotLock());
        if (standIn) {
            slip_->FillStandIn(word, doc, *target, field, coder_, row, [&] { return (*standIn)(bookmark); });
        } else {
            slip_->Fill(word, doc, *target, field, coder_, row);
        }
        return;
    }
    const std::vector<std::string> inside = bookmarksInside(*target);
    const word::SelectionPtr selection = word.Selection();
    if (field == "QRCode") {
        pasteQRCode(*selection, row);
    } else {
        selection->TypeText(standIn ? (*standIn)(bookmark) : textOf(field, row));
    }
    // In Word a bookmark goes with the text it marks; here one that starts or ends exactly where
    // the filled one does would survive, depending on the order of the markers in the file.
    for (const std::string& name : inside) {
        if (stillThere(doc, name)) {
            doc.Bookmarks()->Item(name)->Delete();
        }
    }
}

// The other bookmarks within the bookmark's text; a collapsed one at its edge lies outside it.
std::vector<std::string> BookmarkFiller::bookmarksInside(word::Bookmark& bookmark) {
    try {
        return bookmarksWithin(bookmark);
    } catch (const std::exception&) {
        return {}; // a range that cannot list its bookmarks leaves them to the typing
    }
}

std::vector<std::string> BookmarkFiller::bookmarksWithin(word::Bookmark& bookmark) {
    const long start = bookmark.Start();
    const long end = bookmark.End();
    const std::string own = bookmark.Name();
    const word::BookmarksPtr within = bookmark.Range()->Bookmarks();
    std::vector<std::string> names;
    for (int i = 1; i <= within->Count(); ++i) {
        const word::BookmarkPtr other = within->Item(i);
        const long otherStart = other->Start();
        const bool atEdge = otherStart == other->End() && (otherStart == start || otherStart == end);
        if (other->Name() != own && !atEdge) {
            names.push_back(other->Name());
        }
    }
    return names;
}

void BookmarkFiller::pasteQRCode(word::Selection& selection, std::int32_t row) {
    // The picture is this filler's own; only the slot between copying and pasting is shared.
    const bool encoded = image_.Encode(coder_.QRText(row));
    const std::lock_guard lock(imageSlotLock());
    image_.ClipboardCopy();
    selection.TypeBackspace();
    if (!encoded) {
        // The placeholder is gone as the picture would have replaced it; say why nothing came.
        throw AutomationError(image_.lastError());
    }
    selection.Paste();
}

std::string BookmarkFiller::codePicture(std::int32_t row) {
    if (!image_.Encode(coder_.QRText(row))) {
        return {};
    }
    return std::string(image_.png().begin(), image_.png().end());
}

std::string BookmarkFiller::slipShape(std::int32_t row) const {
    return slip_ ? slip_->Shape(coder_, row) : std::string();
}

std::string BookmarkFiller::textOf(const std::string& field, std::int32_t row) {
    if (field.starts_with(SlipPrefix)) {
        return slip_ ? slip_->Value(field, coder_, row) : std::string();
    }
    if (field == "QRText") {
        return typeable(withCrLf(coder_.QRText(row)));
    }
    if (field == "Receiver") {
        return typeable(coder_.Receiver(row));
    }
    if (field == "ReceiverFinal") {
        return typeable(coder_.ReceiverFinal(row));
    }
    if (field == "ReceiverBlock") {
        return typeable(coder_.ReceiverBlock(row));
    }
    if (field == "Sender") {
        return typeable(coder_.Sender(row));
    }
    if (field == "Amount") {
        return typeable(coder_.Amount(row));
    }
    if (field == "Currency") {
        return typeable(coder_.Ccy(row));
    }
    return typeable(data_.FieldStr(field, row));
}

} // namespace wordbm
