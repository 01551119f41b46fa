#pragma once

#include "engine/ooxml/Location.h"

#include <string>
#include <string_view>

namespace wordbm::ooxml {

// Writes typed text at a location as runs carrying a copy of the given run properties: "\t" becomes
// w:tab, "\v" a line break, "\f" a page break, "\r", "\n" or "\r\n" a new paragraph (the paragraph is
// split and both halves keep its properties). Other control characters cannot be stored in XML and
// are dropped.
class TextWriter {
public:
    TextWriter(Location at, pugi::xml_node runProperties) : at_(at), properties_(runProperties) {}

    // Returns the number of characters (UTF-16 units) the text now takes in the story.
    long write(std::string_view text);
    // A prepared run (a picture) at the current place; counts one character.
    void writeRun(pugi::xml_node prototype);

    // Splits the paragraph that holds `at`; the new paragraph before it takes what precedes `at`.
    // Returns the location at the start of the remaining (original) paragraph.
    static Location splitParagraph(Location at);

private:
    pugi::xml_node run();
    void flush();

    Location at_;
    pugi::xml_node properties_;
    pugi::xml_node run_;
    std::string pending_;
    long units_ = 0;
};

} // namespace wordbm::ooxml
