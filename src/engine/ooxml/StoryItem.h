#pragma once

#include <cstdint>
#include <pugixml.hpp>
#include <string>

namespace wordbm::ooxml {

// What one entry of a story's offset table stands for.
enum class ItemKind : std::uint8_t {
    Text,          // a w:t; as wide as its text
    Special,       // a run child that is one character: tab, break, symbol, inline object, note mark
    ParagraphMark, // the end of a w:p: "\r"
    BookmarkStart, // w:bookmarkStart at any level
    BookmarkEnd,   // w:bookmarkEnd
    FieldBegin,    // w:fldChar of a complex field
    FieldSeparate,
    FieldEnd,
    SimpleFieldBegin, // entering a w:fldSimple (node: the w:fldSimple)
    SimpleFieldEnd,   // leaving it
    Hidden,           // text inside a field code (instrText, or a nested result stored there)
    Neutral,          // zero-width run content kept in place: deleted text, anchored shapes, hints
};

// One entry of the table: a node and the story offset where its characters begin.
struct StoryItem {
    pugi::xml_node node;
    long offset = 0;
    std::int32_t width = 0;  // UTF-16 units
    std::int32_t field = -1; // index of the field for field items
    ItemKind kind = ItemKind::Neutral;
};

// A complex or simple field, by item indices. Fields nest properly; `parent` is the enclosing one.
struct FieldSpan {
    int begin = -1;
    int separate = -1; // -1 when the field has no result part
    int end = -1;
    int parent = -1;
    bool simple = false;
    std::string code; // own code plus the codes of fields nested in it, without their results
};

// A bookmark of one story whose start and end were both found.
struct BookmarkSpan {
    std::string name;
    std::string id;
    int startItem = -1;
    int endItem = -1;
    long start = 0;
    long end = 0;
};

// A place between two items: `inner` counts units into a Text item (0 = before the item).
struct Cut {
    int item = 0;
    long inner = 0;
};

} // namespace wordbm::ooxml
