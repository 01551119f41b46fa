#pragma once

#include <pugixml.hpp>
#include <string>
#include <string_view>

namespace wordbm::ooxml {

// The content types of a package, read and edited in place in the parsed [Content_Types].xml.
// Part names are given without the leading "/" and matched ignoring case, as are extensions.
class ContentTypes {
public:
    explicit ContentTypes(pugi::xml_document& document);

    // The Override for the part, else the Default for its extension; empty when neither exists.
    std::string of(std::string_view partName) const;
    // Records `contentType` for the part the way that needs the least: nothing when the Default
    // already says so, else an Override. Returns whether the XML changed.
    bool assign(std::string_view partName, std::string_view contentType);
    // Returns whether an Override was there to remove.
    bool removeOverride(std::string_view partName);

private:
    pugi::xml_node findOverride(std::string_view partName) const;
    pugi::xml_node findDefault(std::string_view extension) const;
    pugi::xml_node types() const;

    pugi::xml_document& document_;
};

} // namespace wordbm::ooxml
