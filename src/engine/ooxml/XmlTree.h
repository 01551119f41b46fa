#pragma once

#include <pugixml.hpp>
#include <string_view>

// Walks over XML trees without recursion: a hostile form may nest elements deeply enough to
// exhaust the stack of a recursive walk. pugixml keeps parent links, so document order needs no stack.
namespace wordbm::ooxml::xmltree {

// The node after `node` in document order (children first) that still lies below `root`; null at the end.
pugi::xml_node next(pugi::xml_node node, pugi::xml_node root);

// Like next, but leaves out the children of `node`.
pugi::xml_node nextSkippingChildren(pugi::xml_node node, pugi::xml_node root);

bool isInside(pugi::xml_node node, pugi::xml_node ancestor);

// The nearest ancestor (not the node itself) with the given name, stopping at `limit`; null when none.
pugi::xml_node ancestorNamed(pugi::xml_node node, std::string_view name, pugi::xml_node limit = {});

// The first element with the given name below `root` in document order; null when none.
pugi::xml_node firstDescendant(pugi::xml_node root, std::string_view name);

// Calls `visit` for every element below `root` with the given name, in document order. Elements
// inside a match are visited too. The callback must not remove the node it is given.
template <class Visit> void forEachNamed(pugi::xml_node root, std::string_view name, Visit&& visit) {
    for (auto node = next(root, root); node; node = next(node, root)) {
        if (node.type() == pugi::node_element && name == node.name()) {
            visit(node);
        }
    }
}

// True when the node lies in an mc:Fallback below `limit`: the alternative Word itself does not read.
bool inFallback(pugi::xml_node node, pugi::xml_node limit = {});

} // namespace wordbm::ooxml::xmltree
