#pragma once

#include <pugixml.hpp>

namespace wordbm::ooxml {

// Which part of a field a span stands for. Field codes take no offsets, so a field without a result
// is a collapsed span: the field node says what to replace.
enum class FieldPart { None, Whole, Result, Code };

// A stretch of one story in offsets, optionally tied to a field (by its begin node).
struct Span {
    Span() = default;
    Span(long from, long to) : start(from), end(to) {}
    Span(long from, long to, FieldPart which, pugi::xml_node fieldNode)
        : start(from), end(to), part(which), field(fieldNode) {}

    long start = 0;
    long end = 0;
    FieldPart part = FieldPart::None;
    pugi::xml_node field;

    bool collapsed() const { return start == end && part == FieldPart::None; }
};

} // namespace wordbm::ooxml
