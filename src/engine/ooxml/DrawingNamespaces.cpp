#include "engine/ooxml/DrawingNamespaces.h"

#include "engine/ooxml/DrawingXml.h"

#include <array>
#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <utility>

namespace wordbm::ooxml {

namespace {

using Binding = std::pair<const char*, const char*>;

const std::array<Binding, 9>& bindings() {
    static const std::array<Binding, 9> all{{
        {"xmlns:w", DrawingNamespaces::Wordprocessing},
        {"xmlns:r", DrawingNamespaces::Relationships},
        {"xmlns:wp", DrawingNamespaces::WordDrawing},
        {"xmlns:wpc", DrawingNamespaces::Canvas},
        {"xmlns:wps", DrawingNamespaces::Shape},
        {"xmlns:mc", DrawingNamespaces::Compatibility},
        {"xmlns:v", DrawingNamespaces::Vml},
        {"xmlns:o", DrawingNamespaces::VmlOffice},
        {"xmlns:w10", DrawingNamespaces::VmlWord},
    }};
    return all;
}

bool isDeclaration(std::string_view name) {
    return name == "xmlns" || name.starts_with("xmlns:");
}

std::string_view prefixOf(std::string_view name) {
    const auto colon = name.find(':');
    return colon == std::string_view::npos ? std::string_view() : name.substr(0, colon);
}

void notePrefixes(pugi::xml_node node, std::set<std::string, std::less<>>& used) {
    used.emplace(prefixOf(node.name()));
    for (const pugi::xml_attribute attribute : node.attributes()) {
        if (!isDeclaration(attribute.name()) && prefixOf(attribute.name()) != "xml") {
            used.emplace(prefixOf(attribute.name()));
        }
    }
}

// The prefixes that elements and attributes of the subtree use; "" for the default namespace.
std::set<std::string, std::less<>> usedPrefixes(pugi::xml_node top) {
    std::set<std::string, std::less<>> used;
    notePrefixes(top, used);
    drawingXml::forEachElement(top, [&](pugi::xml_node node) {
        notePrefixes(node, used);
        return drawingXml::Visit::Enter;
    });
    return used;
}

} // namespace

void DrawingNamespaces::declare(pugi::xml_node element) {
    pugi::xml_node root = element.root().first_child();
    while (root && root.type() != pugi::node_element) {
        root = root.next_sibling();
    }
    if (!root) {
        return;
    }
    for (const auto& [attribute, uri] : bindings()) {
        const pugi::xml_attribute bound = root.attribute(attribute);
        if (!bound) {
            root.append_attribute(attribute).set_value(uri);
        } else if (std::string_view(bound.value()) != uri && !element.attribute(attribute)) {
            element.append_attribute(attribute).set_value(uri);
        }
    }
}

void DrawingNamespaces::carry(pugi::xml_node from, pugi::xml_node stop, pugi::xml_node to) {
    const auto used = usedPrefixes(to);
    // Nearest declaration wins, so the walk goes outwards and never overwrites one already taken.
    for (pugi::xml_node node = from; node && node != stop; node = node.parent()) {
        for (const pugi::xml_attribute attribute : node.attributes()) {
            const std::string_view name = attribute.name();
            const std::string_view declared =
                name == "xmlns" ? std::string_view() : name.substr(name.find(':') + 1);
            if (isDeclaration(name) && used.contains(declared) && !to.attribute(attribute.name())) {
                to.append_attribute(attribute.name()).set_value(attribute.value());
            }
        }
    }
}

} // namespace wordbm::ooxml
