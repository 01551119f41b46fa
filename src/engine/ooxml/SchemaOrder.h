#pragma once

#include <pugixml.hpp>
#include <string_view>

namespace wordbm::ooxml {

// Inserts children where the schema wants them (w:rPr first in w:r, w:pPr first in w:p, the run
// properties in their fixed order), so that Word accepts what we write.
class SchemaOrder {
public:
    // The child with that name, created at its place when missing.
    static pugi::xml_node child(pugi::xml_node parent, std::string_view name);

private:
    static int rank(std::string_view parent, std::string_view name);
};

} // namespace wordbm::ooxml
