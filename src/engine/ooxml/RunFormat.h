#pragma once

#include <pugixml.hpp>
#include <string>

namespace wordbm::ooxml {

class Package;

// The character formatting a run shows, worked out as Word does: document defaults, then the
// paragraph's style chain, then the run's character style chain, then the run's own properties.
// Theme fonts are looked up in the theme part.
struct RunFormat {
    std::string font = "Times New Roman";
    float size = 10.0F;
    bool bold = false;

    // `runProperties`: the w:rPr of a run (or of a paragraph mark), may be null; `paragraph`: its w:p.
    static RunFormat of(Package& package, pugi::xml_node runProperties, pugi::xml_node paragraph);

    // Writes the font name into run properties as Word does for Font.Name (theme fonts dropped).
    static void setFont(pugi::xml_node runProperties, const std::string& name);
    static void setSize(pugi::xml_node runProperties, float points);
    static void setBold(pugi::xml_node runProperties, bool bold);
};

} // namespace wordbm::ooxml
