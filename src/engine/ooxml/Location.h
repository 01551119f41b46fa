#pragma once

#include <pugixml.hpp>

namespace wordbm::ooxml {

// A place between siblings outside runs: new nodes go after `prev` (at the start when it is null),
// and the location moves behind each node put there, so a sequence lands in order.
struct Location {
    pugi::xml_node parent;
    pugi::xml_node prev;

    pugi::xml_node insert(const char* name) {
        return advance(prev ? parent.insert_child_after(name, prev) : parent.prepend_child(name));
    }
    pugi::xml_node insertCopy(pugi::xml_node proto) {
        return advance(prev ? parent.insert_copy_after(proto, prev) : parent.prepend_copy(proto));
    }
    pugi::xml_node insertMove(pugi::xml_node node) {
        return advance(prev ? parent.insert_move_after(node, prev) : parent.prepend_move(node));
    }

private:
    pugi::xml_node advance(pugi::xml_node node) {
        prev = node;
        return node;
    }
};

} // namespace wordbm::ooxml
