#include "engine/ooxml/SpanDeleter.h"

#include "engine/ooxml/XmlTree.h"

#include <algorithm>
#include <string_view>

namespace wordbm::ooxml {

namespace {

bool isMarker(std::string_view name) {
    return name == "w:bookmarkStart" || name == "w:bookmarkEnd" || name == "w:permStart" ||
           name == "w:permEnd" || name == "w:proofErr" || name == "w:commentRangeStart" ||
           name == "w:commentRangeEnd";
}

bool onlyProperties(pugi::xml_node run) {
    for (auto child = run.first_child(); child; child = child.next_sibling()) {
        if (child.type() == pugi::node_element && std::string_view(child.name()) != "w:rPr") {
            return false;
        }
    }
    return true;
}

} // namespace

void SpanDeleter::erase(int from, int to) {
    const auto whole = wholeFieldItems(from, to);
    const auto gone = bookmarksInside(from, to);
    std::vector<pugi::xml_node> marks;
    std::vector<pugi::xml_node> simpleFields;
    for (int i = from; i < to; ++i) {
        const auto& item = map_.items[i];
        switch (item.kind) {
        case ItemKind::ParagraphMark:
            marks.push_back(item.node);
            break;
        case ItemKind::BookmarkStart:
        case ItemKind::BookmarkEnd:
            if (std::binary_search(gone.begin(), gone.end(),
                                   std::string(item.node.attribute("w:id").value()))) {
                item.node.parent().remove_child(item.node);
                removedMarkers_.push_back(i);
            }
            break;
        case ItemKind::SimpleFieldBegin:
            if (whole[i - from]) {
                simpleFields.push_back(item.node);
            }
            break;
        case ItemKind::SimpleFieldEnd:
            break;
        case ItemKind::Text:
        case ItemKind::Special:
            removeLeaf(item.node);
            break;
        default:
            if (!whole[i - from]) {
                break;
            }
            // A simple field inside deleted text holds items of its own: it goes last, as one element.
            if (std::string_view(item.node.name()) == "w:fldSimple") {
                simpleFields.push_back(item.node);
            } else {
                removeLeaf(item.node);
            }
        }
    }
    // Inner fields first: removing an outer one frees the inner one's nodes.
    std::for_each(simpleFields.rbegin(), simpleFields.rend(),
                  [&](pugi::xml_node field) { removeSimpleField(field, from, to); });
    for (const auto run : emptiedRuns_) {
        if (run.parent() && onlyProperties(run)) {
            run.parent().remove_child(run);
        }
    }
    std::for_each(marks.rbegin(), marks.rend(), [](pugi::xml_node mark) { joinWithNext(mark); });
}

// Marks the items that belong to a field lying wholly inside [from, to): they go with the field.
std::vector<bool> SpanDeleter::wholeFieldItems(int from, int to) const {
    std::vector<bool> whole(static_cast<std::size_t>(to - from), false);
    int depth = 0;
    std::vector<bool> stack;
    for (int i = from; i < to; ++i) {
        const auto& item = map_.items[i];
        const bool opens = item.kind == ItemKind::FieldBegin || item.kind == ItemKind::SimpleFieldBegin;
        const bool closes = item.kind == ItemKind::FieldEnd || item.kind == ItemKind::SimpleFieldEnd;
        if (opens) {
            const bool inside = map_.fields[item.field].end < to;
            stack.push_back(inside);
            depth += inside ? 1 : 0;
        }
        whole[i - from] = depth > 0;
        if (closes && !stack.empty() && map_.fields[item.field].begin >= from) {
            depth -= stack.back() ? 1 : 0;
            stack.pop_back();
        }
    }
    return whole;
}

std::vector<std::string> SpanDeleter::bookmarksInside(int from, int to) const {
    std::vector<std::string> inside;
    for (const auto& bookmark : map_.bookmarks) {
        if (bookmark.startItem >= from && bookmark.endItem < to) {
            inside.push_back(bookmark.id);
        }
    }
    std::sort(inside.begin(), inside.end());
    return inside;
}

void SpanDeleter::removeLeaf(pugi::xml_node leaf) {
    auto parent = leaf.parent();
    if (!parent) {
        return;
    }
    if (removing_ && std::string_view(leaf.name()) != "w:t") {
        removing_(leaf);
    }
    parent.remove_child(leaf);
    if (std::string_view(parent.name()) == "w:r") {
        emptiedRuns_.push_back(parent);
    }
}

// A simple field goes as one element; markers of bookmarks reaching outside the span are kept in front.
void SpanDeleter::removeSimpleField(pugi::xml_node field, int from, int to) {
    for (int i = from; i < to; ++i) {
        const auto& item = map_.items[i];
        const bool marker = item.kind == ItemKind::BookmarkStart || item.kind == ItemKind::BookmarkEnd;
        const bool removed =
            std::find(removedMarkers_.begin(), removedMarkers_.end(), i) != removedMarkers_.end();
        if (marker && !removed && xmltree::isInside(item.node, field)) {
            field.parent().insert_move_before(item.node, field);
        }
    }
    std::erase_if(emptiedRuns_, [&](pugi::xml_node run) { return xmltree::isInside(run, field); });
    if (removing_) {
        removing_(field);
    }
    field.parent().remove_child(field);
}

bool SpanDeleter::joinWithNext(pugi::xml_node paragraph) {
    std::vector<pugi::xml_node> between;
    auto next = paragraph.next_sibling();
    while (next && (next.type() != pugi::node_element || isMarker(next.name()))) {
        if (next.type() == pugi::node_element) {
            between.push_back(next);
        }
        next = next.next_sibling();
    }
    if (!next || std::string_view(next.name()) != "w:p") {
        return false;
    }
    for (const auto marker : between) {
        paragraph.append_move(marker);
    }
    // The properties node itself stays: a location may refer to it.
    if (auto ownProperties = paragraph.child("w:pPr")) {
        while (ownProperties.first_child()) {
            ownProperties.remove_child(ownProperties.first_child());
        }
        if (auto nextProperties = next.child("w:pPr")) {
            for (auto attribute : nextProperties.attributes()) {
                ownProperties.append_attribute(attribute.name()) = attribute.value();
            }
            while (nextProperties.first_child()) {
                ownProperties.append_move(nextProperties.first_child());
            }
            next.remove_child(nextProperties);
        }
    } else if (auto nextProperties = next.child("w:pPr")) {
        paragraph.prepend_move(nextProperties);
    }
    while (next.first_child()) {
        paragraph.append_move(next.first_child());
    }
    next.parent().remove_child(next);
    return true;
}

} // namespace wordbm::ooxml
