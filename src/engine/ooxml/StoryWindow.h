#pragma once

#include "engine/ooxml/MarkerChange.h"
#include "engine/ooxml/TextMap.h"

#include <cstdint>
#include <vector>

namespace wordbm::ooxml {

// The offset table of consecutive segments of a story, with what an edit within them needs to
// re-read them afterwards: the untouched neighbours and the markers and fields as they were.
struct StoryWindow {
    TextMap map;
    int from = 0; // first and last segment
    int to = 0;
    pugi::xml_node before; // the node in front of the window (null at the story's start)
    pugi::xml_node stop;   // the node behind it (null at the story's end)
    std::uint64_t version = 0;
    std::vector<MarkerChange> markers;               // the bookmark markers when it was read
    std::vector<pugi::xml_node_struct*> fieldBegins; // the fields' begins when it was read
};

} // namespace wordbm::ooxml
