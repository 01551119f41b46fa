#pragma once

#include <cstdint>
#include <pugixml.hpp>
#include <string>

namespace wordbm::ooxml {

// A run holding a picture that stands in the line (wp:inline), as Word writes a pasted picture.
class InlinePicture {
public:
    // Builds the run into `holder` (emptied first) and returns it. Sizes in EMU.
    static pugi::xml_node build(pugi::xml_document& holder, const std::string& relationshipId,
                                std::int64_t width, std::int64_t height, unsigned id,
                                const std::string& name);
};

} // namespace wordbm::ooxml
