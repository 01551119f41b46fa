#include "engine/ooxml/RelationshipsXml.h"

#include <algorithm>
#include <set>

namespace wordbm::ooxml {

namespace {

bool isRelationship(pugi::xml_node node) {
    const std::string_view name = node.name();
    const auto colon = name.find(':');
    return (colon == std::string_view::npos ? name : name.substr(colon + 1)) == "Relationship";
}

} // namespace

RelationshipsXml::RelationshipsXml(pugi::xml_document& document) : document_(document) {}

std::string_view RelationshipsXml::emptyPart() {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\r\n"
           "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\"/>";
}

std::vector<Relationship> RelationshipsXml::list() const {
    std::vector<Relationship> result;
    for (const auto node : document_.document_element().children()) {
        if (isRelationship(node)) {
            result.push_back({node.attribute("Id").value(), node.attribute("Type").value(),
                              node.attribute("Target").value(), node.attribute("TargetMode").value()});
        }
    }
    return result;
}

std::string RelationshipsXml::add(std::string_view type, std::string_view target,
                                  std::string_view targetMode) {
    const auto id = freshId();
    auto node = document_.document_element().append_child("Relationship");
    node.append_attribute("Id").set_value(id.c_str());
    node.append_attribute("Type").set_value(std::string(type).c_str());
    node.append_attribute("Target").set_value(std::string(target).c_str());
    if (!targetMode.empty()) {
        node.append_attribute("TargetMode").set_value(std::string(targetMode).c_str());
    }
    return id;
}

bool RelationshipsXml::remove(std::string_view id) {
    for (auto node : document_.document_element().children()) {
        if (isRelationship(node) && id == node.attribute("Id").value()) {
            return document_.document_element().remove_child(node);
        }
    }
    return false;
}

// Word numbers its ids rId1, rId2 ...; continuing after the highest number keeps new ids short
// and unlike any id in the part (overlong numbers are not counted, the loop still avoids them).
std::string RelationshipsXml::freshId() const {
    std::set<std::string, std::less<>> used;
    unsigned long highest = 0;
    for (const auto& relationship : list()) {
        used.insert(relationship.id);
        if (!relationship.id.starts_with("rId")) {
            continue;
        }
        const auto digits = std::string_view(relationship.id).substr(3);
        if (!digits.empty() && digits.size() <= 9 &&
            digits.find_first_not_of("0123456789") == std::string_view::npos) {
            highest = std::max(highest, std::stoul(std::string(digits)));
        }
    }
    for (auto number = highest + 1;; ++number) {
        auto id = "rId" + std::to_string(number);
        if (!used.contains(id)) {
            return id;
        }
    }
}

} // namespace wordbm::ooxml
