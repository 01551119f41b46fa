#include "engine/ooxml/ContentTypes.h"

#include "engine/ooxml/PartName.h"

namespace wordbm::ooxml {

namespace {

constexpr const char* TypesNamespace = "http://schemas.openxmlformats.org/package/2006/content-types";

// Elements are matched by local name: a producer may bind the namespace to a prefix.
std::string_view localName(pugi::xml_node node) {
    const std::string_view name = node.name();
    const auto colon = name.find(':');
    return colon == std::string_view::npos ? name : name.substr(colon + 1);
}

} // namespace

ContentTypes::ContentTypes(pugi::xml_document& document) : document_(document) {}

pugi::xml_node ContentTypes::types() const {
    auto root = document_.document_element();
    if (!root) {
        root = document_.append_child("Types");
        root.append_attribute("xmlns").set_value(TypesNamespace);
    }
    return root;
}

pugi::xml_node ContentTypes::findOverride(std::string_view partName) const {
    const auto key = partKey(partName);
    for (auto node : document_.document_element().children()) {
        if (localName(node) == "Override" && partKey(node.attribute("PartName").value()) == key) {
            return node;
        }
    }
    return {};
}

pugi::xml_node ContentTypes::findDefault(std::string_view extension) const {
    const auto key = partKey(extension);
    for (auto node : document_.document_element().children()) {
        if (localName(node) == "Default" && partKey(node.attribute("Extension").value()) == key) {
            return node;
        }
    }
    return {};
}

std::string ContentTypes::of(std::string_view partName) const {
    if (const auto node = findOverride(partName)) {
        return node.attribute("ContentType").value();
    }
    const auto extension = extensionOf(partName);
    if (extension.empty()) {
        return {};
    }
    return findDefault(extension).attribute("ContentType").value();
}

bool ContentTypes::assign(std::string_view partName, std::string_view contentType) {
    if (of(partName) == contentType) {
        return false;
    }
    const auto byDefault = findDefault(extensionOf(partName));
    if (byDefault && contentType == byDefault.attribute("ContentType").value()) {
        return removeOverride(partName);
    }
    auto node = findOverride(partName);
    if (!node) {
        node = types().append_child("Override");
        const auto bare = partName.starts_with('/') ? partName.substr(1) : partName;
        node.append_attribute("PartName").set_value(("/" + std::string(bare)).c_str());
        node.append_attribute("ContentType");
    }
    node.attribute("ContentType").set_value(std::string(contentType).c_str());
    return true;
}

bool ContentTypes::removeOverride(std::string_view partName) {
    const auto node = findOverride(partName);
    return node && node.parent().remove_child(node);
}

} // namespace wordbm::ooxml
