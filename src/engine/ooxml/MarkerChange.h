#pragma once

#include "engine/ooxml/StoryItem.h"

#include <string>

namespace wordbm::ooxml {

// A bookmark marker that an edit of a story removed or added, as the bookmark index follows it.
struct MarkerChange {
    bool added = false;
    pugi::xml_node_struct* node = nullptr; // only compared once removed: the node is freed
    ItemKind kind = ItemKind::BookmarkStart;
    std::string id;
    std::string name;
    // For an added start: the end it pairs with in the edited stretch (null when none).
    pugi::xml_node partner;
};

} // namespace wordbm::ooxml
