#pragma once

#include "engine/ooxml/Span.h"

#include <algorithm>

namespace wordbm::ooxml {

class Story;

// Where a document's cursor stands: the fixed end (anchor) and the end that moves (active). A
// selection made by Field.Select also names its field, so typing replaces the whole field.
struct SelectionState {
    Story* story = nullptr;
    long anchor = 0;
    long active = 0;
    FieldPart part = FieldPart::None;
    pugi::xml_node field;

    long start() const { return std::min(anchor, active); }
    long end() const { return std::max(anchor, active); }
    Span span() const { return {start(), end(), part, field}; }
    void collapseTo(long offset) {
        anchor = active = offset;
        part = FieldPart::None;
        field = {};
    }
};

} // namespace wordbm::ooxml
