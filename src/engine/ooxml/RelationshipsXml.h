#pragma once

#include "engine/ooxml/Relationship.h"

#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <vector>

namespace wordbm::ooxml {

// The relationships of one source, read and edited in place in its parsed .rels part.
class RelationshipsXml {
public:
    explicit RelationshipsXml(pugi::xml_document& document);

    // The text of a .rels part without relationships, as a new one starts out.
    static std::string_view emptyPart();

    std::vector<Relationship> list() const;
    // Appends a relationship with an id not used yet in this part and returns the id.
    std::string add(std::string_view type, std::string_view target, std::string_view targetMode);
    // Returns whether a relationship with that id was there.
    bool remove(std::string_view id);

private:
    std::string freshId() const;

    pugi::xml_document& document_;
};

} // namespace wordbm::ooxml
