#pragma once

#include "engine/ooxml/Location.h"
#include "engine/ooxml/TextMap.h"

#include <string_view>

namespace wordbm::ooxml {

// Splits runs and their text only where an edit begins or ends. Splitting moves nodes rather than
// copying them, so every other node handle (fields, shapes, other items) stays valid.
class RunSplitter {
public:
    // Cuts a w:t after `units` UTF-16 units; the node keeps the head, a new w:t after it the tail.
    static void splitText(pugi::xml_node text, long units);
    // Puts `child` and what follows it in its run into a new run with the same properties; returns the
    // run that now starts with `child` (the old one when nothing precedes it).
    static pugi::xml_node splitRunBefore(pugi::xml_node child);
    // The location right before item `index` (or behind the last item), splitting its run if needed.
    static Location before(const TextMap& map, int index);
    // Sets the text of a w:t, marking it preserve when blanks at either end would otherwise be lost.
    static void setText(pugi::xml_node text, std::string_view value);
};

} // namespace wordbm::ooxml
