#include "engine/slip/SlipBoxWriter.h"

#include "data/KnownFields.h"
#include "engine/slip/SlipValue.h"
#include "engine/word/Application.h"
#include "engine/word/Bookmarks.h"
#include "engine/word/Document.h"
#include "engine/word/Font.h"
#include "engine/word/Range.h"
#include "engine/word/Selection.h"
#include "engine/word/Shapes.h"
#include "qrbill/Trans.h"

namespace wordbm {

namespace {

constexpr const char* SlipPrefix = "ESQR";
constexpr const char* HeadingSuffix = "TX";

} // namespace

void SlipBoxWriter::Write(word::Shape& box, const SlipLayout::Box& layout, const SlipLayout::Sizes& sizes) {
    const word::RangePtr story = box.TextFrame()->TextRange();
    story->Select();
    selection_ = word_.Selection();
    selection_->SetRange(story->Start(), story->Start());
    // Typed text takes the paragraph mark's font, which also sets the height of an emptied box.
    format(sizes.value, false);
    std::vector<Piece> pieces;
    for (const SlipLayout::Entry& item : layout.entries) {
        entry(item, pieces);
    }
    // Bold only where it belongs, and only once everything is typed: values never inherit it, and
    // no run says "not bold", which LibreOffice draws bold in a text box.
    const float headingSize = layout.title ? sizes.title : sizes.heading;
    for (const Piece& piece : pieces) {
        selection_->SetRange(piece.start, piece.end);
        format(piece.heading ? headingSize : sizes.value, piece.heading);
    }
}

std::string SlipBoxWriter::Heading(const SlipLayout::Entry& entry) const {
    const std::string text = texts_.Text(entry.key + HeadingSuffix, language_);
    return text.empty() ? entry.german : text;
}

void SlipBoxWriter::entry(const SlipLayout::Entry& entry, std::vector<Piece>& pieces) {
    if (!entry.german.empty()) {
        const long start = placeholder(Heading(entry), SlipPrefix + entry.key + HeadingSuffix);
        if (entry.value && entry.valueOnNewLine) {
            selection_->TypeText(std::string(1, SlipValue::LineBreak));
        }
        pieces.push_back({start, selection_->End(), true});
    }
    if (entry.value) {
        const std::string field = SlipPrefix + entry.key;
        const long start = placeholder(field, field);
        pieces.push_back({start, selection_->End(), false});
    }
}

long SlipBoxWriter::placeholder(const std::string& text, const std::string& field) {
    const long open = selection_->Start();
    selection_->TypeText("[" + text + "]");
    const long close = selection_->End();
    selection_->SetRange(open + 1, close - 1);
    doc_.Bookmarks()->Add(bookmarkName(field), selection_->Range());
    selection_->SetRange(close, close);
    return open;
}

void SlipBoxWriter::format(float size, bool bold) {
    const word::FontPtr font = selection_->Font();
    font->Name(SlipLayout::FontName);
    font->Size(size);
    if (bold) {
        font->Bold(true);
    }
}

std::string SlipBoxWriter::bookmarkName(const std::string& field) const {
    const word::BookmarksPtr bookmarks = doc_.Bookmarks();
    return KnownFields::UnusedBookmarkName(field,
                                           [&](const std::string& name) { return bookmarks->Exists(name); });
}

} // namespace wordbm
