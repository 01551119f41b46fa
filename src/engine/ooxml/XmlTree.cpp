#include "engine/ooxml/XmlTree.h"

namespace wordbm::ooxml::xmltree {

pugi::xml_node next(pugi::xml_node node, pugi::xml_node root) {
    if (auto child = node.first_child()) {
        return child;
    }
    return nextSkippingChildren(node, root);
}

pugi::xml_node nextSkippingChildren(pugi::xml_node node, pugi::xml_node root) {
    for (auto at = node; at && at != root; at = at.parent()) {
        if (auto sibling = at.next_sibling()) {
            return sibling;
        }
    }
    return {};
}

bool isInside(pugi::xml_node node, pugi::xml_node ancestor) {
    for (auto at = node.parent(); at; at = at.parent()) {
        if (at == ancestor) {
            return true;
        }
    }
    return false;
}

pugi::xml_node ancestorNamed(pugi::xml_node node, std::string_view name, pugi::xml_node limit) {
    for (auto at = node.parent(); at && at != limit; at = at.parent()) {
        if (name == at.name()) {
            return at;
        }
    }
    return {};
}

pugi::xml_node firstDescendant(pugi::xml_node root, std::string_view name) {
    for (auto node = next(root, root); node; node = next(node, root)) {
        if (node.type() == pugi::node_element && name == node.name()) {
            return node;
        }
    }
    return {};
}

bool inFallback(pugi::xml_node node, pugi::xml_node limit) {
    return static_cast<bool>(ancestorNamed(node, "mc:Fallback", limit));
}

} // namespace wordbm::ooxml::xmltree
