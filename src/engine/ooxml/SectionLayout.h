#pragma once

#include <array>
#include <pugixml.hpp>
#include <string>
#include <vector>

namespace wordbm::ooxml {

class Package;
class Story;
class StoryRegistry;

// The header and footer parts each section shows, by Word's index (0 primary, 1 first page, 2 even
// pages). A type a section does not define is the one of the section before; empty when no section
// up to this one defines it.
struct SectionParts {
    std::array<std::string, 3> headers;
    std::array<std::string, 3> footers;
};

class SectionLayout {
public:
    // One entry per section: every w:sectPr in a paragraph, then the body's own (or an implicit one
    // when the body has none). Also gives header and footer stories their Word story types.
    static std::vector<SectionParts> read(Package& package, StoryRegistry& stories);
    // The w:sectPr of every section in the same order; the last one may be null (implicit).
    static std::vector<pugi::xml_node> properties(Story& main);
};

} // namespace wordbm::ooxml
