#pragma once

#include "engine/ooxml/StoryItem.h"

#include <string>
#include <unordered_map>
#include <vector>

namespace wordbm::ooxml {

// The offset table of one story, or of a stretch of whole paragraphs of it (a window): every item in
// document order with its story offset, the fields and the bookmarks. Built by TextMapBuilder.
class TextMap {
public:
    std::vector<StoryItem> items;
    std::vector<FieldSpan> fields;
    std::vector<BookmarkSpan> bookmarks; // in the order of their starts

    // Where the table ends: the story's visible characters, the last paragraph mark included (for a
    // window, the offset behind its last character).
    long length() const { return length_; }
    void setLength(long length) { length_ = length; }
    // Where the table begins: 0, or a window's first offset.
    long first() const { return first_; }
    void setFirst(long first) { first_ = first; }

    // Visible text of [start, end): field results, not codes; "\r" for paragraph marks.
    std::string text(long start, long end) const;

    // Where text typed at `offset` goes and where a span starting there begins: after bookmark
    // markers (so typing at a bookmark's start extends it, at its end does not), before a field that
    // starts there (typing before a field stays outside it).
    Cut startCut(long offset) const;
    // Where a span ending at `offset` ends: right after its last character, or after the ends of fields
    // that opened before.
    Cut endCut(long offset) const;

    long offsetOf(const Cut& cut) const;
    long fieldStart(int field) const { return items[static_cast<std::size_t>(fields[field].begin)].offset; }
    long fieldEnd(int field) const { return items[static_cast<std::size_t>(fields[field].end)].offset; }
    long resultStart(int field) const;

    // The field whose begin (fldChar or fldSimple) is `node`; -1 when it is gone.
    int fieldOf(pugi::xml_node node) const;
    // The fields whose begin and end lie within the given field, in document order.
    std::vector<int> fieldsInside(int field) const;
    // Fields whose begin and end lie within [start, end], in document order.
    std::vector<int> fieldsWithin(long start, long end) const;

    static std::string specialText(pugi::xml_node node);

private:
    int firstAtOrAfter(long offset) const;
    // Items with offset `offset` and no width, between the characters before and after it.
    std::pair<int, int> zeroWidthRun(int from) const;
    long first_ = 0;
    long length_ = 0;
    // Field index by begin node, made on the first look-up: a form's fields are looked up one by one.
    mutable std::unordered_map<pugi::xml_node_struct*, int> fieldByBegin_;
};

} // namespace wordbm::ooxml
