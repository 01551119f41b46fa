#include "engine/ooxml/DrawingXml.h"

#include <charconv>

namespace wordbm::ooxml::drawingXml {

namespace {

void setAttributes(pugi::xml_node node, Attributes attributes) {
    for (const auto& [key, value] : attributes) {
        node.append_attribute(key).set_value(std::string(value).c_str());
    }
}

} // namespace

pugi::xml_node path(pugi::xml_node from, std::initializer_list<const char*> names) {
    for (const char* name : names) {
        from = from.child(name);
    }
    return from;
}

void forEachElement(pugi::xml_node from, const std::function<Visit(pugi::xml_node)>& visit) {
    pugi::xml_node node = from.first_child();
    while (node && node != from) {
        Visit next = Visit::Skip;
        if (node.type() == pugi::node_element) {
            next = visit(node);
            if (next == Visit::Stop) {
                return;
            }
        }
        if (next == Visit::Enter && node.first_child()) {
            node = node.first_child();
            continue;
        }
        while (node != from && !node.next_sibling()) {
            node = node.parent();
        }
        if (node != from) {
            node = node.next_sibling();
        }
    }
}

pugi::xml_node firstDescendant(pugi::xml_node from, std::string_view name) {
    pugi::xml_node found;
    forEachElement(from, [&](pugi::xml_node node) {
        if (name == node.name()) {
            found = node;
            return Visit::Stop;
        }
        return Visit::Enter;
    });
    return found;
}

pugi::xml_node append(pugi::xml_node parent, const char* name, Attributes attributes) {
    pugi::xml_node node = parent.append_child(name);
    setAttributes(node, attributes);
    return node;
}

pugi::xml_node prepend(pugi::xml_node parent, const char* name, Attributes attributes) {
    pugi::xml_node node = parent.prepend_child(name);
    setAttributes(node, attributes);
    return node;
}

void setAttribute(pugi::xml_node node, const char* name, const std::string& value) {
    pugi::xml_attribute attribute = node.attribute(name);
    (attribute ? attribute : node.append_attribute(name)).set_value(value.c_str());
}

std::int64_t integer(pugi::xml_node node, const char* attribute, std::int64_t fallback) {
    return integer(std::string_view(node.attribute(attribute).value()), fallback);
}

std::int64_t integer(std::string_view text, std::int64_t fallback) {
    std::int64_t value = 0;
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    return error == std::errc() && stop == end && !text.empty() ? value : fallback;
}

bool named(pugi::xml_node node, std::string_view name) {
    return node.type() == pugi::node_element && name == node.name();
}

std::string_view localName(pugi::xml_node node) {
    const std::string_view name = node.name();
    const auto colon = name.find(':');
    return colon == std::string_view::npos ? name : name.substr(colon + 1);
}

std::string_view prefix(pugi::xml_node node) {
    const std::string_view name = node.name();
    const auto colon = name.find(':');
    return colon == std::string_view::npos ? std::string_view() : name.substr(0, colon);
}

pugi::xml_node ancestor(pugi::xml_node from, std::string_view name, pugi::xml_node stop) {
    for (pugi::xml_node node = from; node && node != stop; node = node.parent()) {
        if (named(node, name)) {
            return node;
        }
    }
    return {};
}

pugi::xml_node alternateContentAround(pugi::xml_node node) {
    const pugi::xml_node choice = ancestor(node, "mc:Choice");
    return named(choice.parent(), "mc:AlternateContent") ? choice.parent() : pugi::xml_node();
}

} // namespace wordbm::ooxml::drawingXml
