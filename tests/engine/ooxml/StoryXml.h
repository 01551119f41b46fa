#pragma once

#include "engine/ooxml/Story.h"

#include <memory>
#include <pugixml.hpp>
#include <string>
#include <string_view>

namespace wordbm::ooxml::test {

// A main story made from a body fragment, for tests that look at single paragraphs.
class StoryXml {
public:
    explicit StoryXml(std::string_view bodyContent);

    Story& story() { return *story_; }
    pugi::xml_node body() const { return document_.document_element().child("w:body"); }
    // The body's content serialised without formatting, to compare with what a test expects.
    std::string xml() const;
    std::string text() { return story_->map().text(0, story_->length()); }

private:
    pugi::xml_document document_;
    std::unique_ptr<Story> story_;
};

// Serialises a node as it will be saved (raw, no indentation).
std::string rawXml(pugi::xml_node node);

} // namespace wordbm::ooxml::test
