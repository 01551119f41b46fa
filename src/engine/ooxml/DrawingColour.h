#pragma once

#include <optional>
#include <pugixml.hpp>
#include <string>

namespace wordbm::ooxml {

// The colour a DrawingML colour choice gives, written as VML writes colours ("#4472C4").
// A part cannot see the document's theme, so theme colours come from Word's default Office
// theme; shade, tint and luminance changes are applied.
class DrawingColour {
public:
    // `holder` is the element that holds the colour: a:solidFill, a:fillRef, a:lnRef ...
    // nullopt when it holds none that can be named.
    static std::optional<std::string> of(pugi::xml_node holder);
};

} // namespace wordbm::ooxml
