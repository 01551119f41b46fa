#include "engine/ooxml/CommentAnchors.h"

#include "engine/ooxml/Package.h"
#include "engine/ooxml/XmlTree.h"

#include <array>
#include <string_view>
#include <vector>

namespace wordbm::ooxml {

namespace {

constexpr std::array<std::string_view, 4> StoryRelations{"/header", "/footer", "/footnotes", "/endnotes"};
constexpr std::array<std::string_view, 3> Anchors{"w:commentRangeStart", "w:commentRangeEnd",
                                                  "w:commentReference"};

bool endsWith(std::string_view text, std::string_view end) {
    return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
}

std::vector<std::string> storyParts(const Package& package) {
    const std::string main = package.mainDocumentPart();
    std::vector<std::string> parts{main};
    for (const auto& relation : package.relationships(main)) {
        for (const auto kind : StoryRelations) {
            if (relation.targetMode.empty() && endsWith(relation.type, kind)) {
                parts.push_back(package.resolveTarget(main, relation.target));
            }
        }
    }
    return parts;
}

bool removeAnchors(pugi::xml_node root) {
    std::vector<pugi::xml_node> found;
    for (auto node = xmltree::next(root, root); node; node = xmltree::next(node, root)) {
        for (const auto anchor : Anchors) {
            if (node.type() == pugi::node_element && anchor == node.name()) {
                found.push_back(node);
            }
        }
    }
    for (auto node : found) {
        node.parent().remove_child(node);
    }
    return !found.empty();
}

} // namespace

bool CommentAnchors::present(const Package& package) {
    const std::string main = package.mainDocumentPart();
    for (const auto& relation : package.relationships(main)) {
        if (endsWith(relation.type, "/comments")) {
            return true;
        }
    }
    return false;
}

std::unique_ptr<Package> CommentAnchors::withoutAnchors(const Package& package) {
    auto copy = package.clone();
    for (const auto& part : storyParts(*copy)) {
        if (copy->hasPart(part) && removeAnchors(copy->xml(part).document_element())) {
            copy->markModified(part);
        }
    }
    return copy;
}

} // namespace wordbm::ooxml
