#include "engine/ooxml/RunSplitter.h"

#include "engine/ooxml/Utf16.h"

#include <string>

namespace wordbm::ooxml {

namespace {

bool isBlank(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

bool isRunContent(pugi::xml_node node) {
    return node.type() == pugi::node_element && std::string_view(node.name()) != "w:rPr";
}

} // namespace

void RunSplitter::setText(pugi::xml_node text, std::string_view value) {
    text.text().set(std::string(value).c_str());
    if (!value.empty() && (isBlank(value.front()) || isBlank(value.back())) && !text.attribute("xml:space")) {
        text.append_attribute("xml:space") = "preserve";
    }
}

void RunSplitter::splitText(pugi::xml_node text, long units) {
    const std::string whole = text.child_value();
    const auto at = utf16::byteOffset(whole, units);
    auto tail = text.parent().insert_child_after(text.name(), text);
    setText(text, std::string_view(whole).substr(0, at));
    setText(tail, std::string_view(whole).substr(at));
}

pugi::xml_node RunSplitter::splitRunBefore(pugi::xml_node child) {
    auto run = child.parent();
    bool contentBefore = false;
    for (auto node = run.first_child(); node && node != child; node = node.next_sibling()) {
        contentBefore = contentBefore || isRunContent(node);
    }
    if (!contentBefore) {
        return run;
    }
    auto second = run.parent().insert_child_after("w:r", run);
    for (auto attribute : run.attributes()) {
        second.append_attribute(attribute.name()) = attribute.value();
    }
    if (auto properties = run.child("w:rPr")) {
        second.append_copy(properties);
    }
    for (auto node = child; node;) {
        const auto following = node.next_sibling();
        second.append_move(node);
        node = following;
    }
    return second;
}

Location RunSplitter::before(const TextMap& map, int index) {
    if (index >= static_cast<int>(map.items.size())) {
        auto last = map.items.back().node;
        if (std::string_view(last.parent().name()) == "w:r") {
            last = last.parent();
        }
        return {last.parent(), last};
    }
    const auto& item = map.items[index];
    switch (item.kind) {
    case ItemKind::ParagraphMark:
        return {item.node, item.node.last_child()};
    case ItemKind::SimpleFieldEnd:
        return {item.node, item.node.last_child()};
    case ItemKind::BookmarkStart:
    case ItemKind::BookmarkEnd:
    case ItemKind::SimpleFieldBegin:
        return {item.node.parent(), item.node.previous_sibling()};
    default:
        break;
    }
    if (std::string_view(item.node.parent().name()) != "w:r") {
        return {item.node.parent(), item.node.previous_sibling()};
    }
    const auto run = splitRunBefore(item.node);
    return {run.parent(), run.previous_sibling()};
}

} // namespace wordbm::ooxml
