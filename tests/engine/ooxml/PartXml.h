#pragma once

#include <memory>
#include <pugixml.hpp>
#include <string>

namespace wordbm::ooxml::canvastest {

// XML parts as the drawing tests read and write them: the package layer's flags.
class PartXml {
public:
    // Fails the calling test (and returns an empty document) when the text is not well-formed.
    static std::unique_ptr<pugi::xml_document> parse(const std::string& text);
    static std::string text(const pugi::xml_document& document);
    // The root element of `document`.
    static pugi::xml_node root(const pugi::xml_document& document);
};

} // namespace wordbm::ooxml::canvastest
