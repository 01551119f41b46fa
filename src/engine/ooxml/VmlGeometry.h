#pragma once

#include "engine/ooxml/DrawingRect.h"

#include <pugixml.hpp>

namespace wordbm::ooxml {

// Where a legacy VML shape lies, read from its style: points at the top level; inside a group,
// its coordinates taken through every enclosing group's coordsize and coordorigin.
class VmlGeometry {
public:
    // In points; inside a group, relative to the group's top left corner.
    static DrawingRect rect(pugi::xml_node shape);
};

} // namespace wordbm::ooxml
