#include "engine/ooxml/TextMap.h"

#include "engine/ooxml/Utf16.h"

#include <algorithm>
#include <cstdlib>
#include <string_view>

namespace wordbm::ooxml {

namespace {

bool isFieldOpen(ItemKind kind) {
    return kind == ItemKind::FieldBegin || kind == ItemKind::SimpleFieldBegin;
}

bool isFieldClose(ItemKind kind) {
    return kind == ItemKind::FieldEnd || kind == ItemKind::SimpleFieldEnd;
}

std::string_view textOf(const StoryItem& item) {
    return item.node.child_value();
}

std::string symbolText(pugi::xml_node sym) {
    const char* hex = sym.attribute("w:char").value();
    const auto code = std::strtoul(hex, nullptr, 16);
    // Symbol-font characters live in the private use area; an unreadable code stays visible as "?".
    return code > 0 && code < 0x110000 ? utf16::fromCodePoint(static_cast<char32_t>(code)) : "?";
}

} // namespace

std::string TextMap::specialText(pugi::xml_node node) {
    const std::string_view name = node.name();
    if (name == "w:tab" || name == "w:ptab") {
        return "\t";
    }
    if (name == "w:br") {
        const std::string_view type = node.attribute("w:type").value();
        return type == "page" ? "\f" : type == "column" ? "\x0e" : "\v";
    }
    if (name == "w:cr") {
        return "\v";
    }
    if (name == "w:sym") {
        return symbolText(node);
    }
    if (name == "w:noBreakHyphen") {
        return "\x1e";
    }
    if (name == "w:softHyphen") {
        return "\x1f";
    }
    if (name == "w:footnoteReference" || name == "w:endnoteReference" || name == "w:footnoteRef" ||
        name == "w:endnoteRef") {
        return "\x02";
    }
    if (name == "w:annotationRef" || name == "w:commentReference") {
        return "\x05";
    }
    // Pictures and other objects standing in the text, as Word shows them.
    return "\x01";
}

std::string TextMap::text(long start, long end) const {
    std::string out;
    if (start >= end) {
        return out;
    }
    for (int i = firstAtOrAfter(start) - 1; i < static_cast<int>(items.size()); ++i) {
        if (i < 0) {
            continue;
        }
        const auto& item = items[i];
        if (item.offset >= end) {
            break;
        }
        if (item.width == 0 || item.offset + item.width <= start) {
            continue;
        }
        switch (item.kind) {
        case ItemKind::Text: {
            const auto whole = textOf(item);
            const auto from = utf16::byteOffset(whole, std::max(0L, start - item.offset));
            const auto to = utf16::byteOffset(whole, std::min<long>(item.width, end - item.offset), true);
            out.append(whole.substr(from, to - from));
            break;
        }
        case ItemKind::ParagraphMark:
            out += '\r';
            break;
        default:
            out += specialText(item.node);
        }
    }
    return out;
}

int TextMap::firstAtOrAfter(long offset) const {
    const auto at = std::lower_bound(items.begin(), items.end(), offset,
                                     [](const StoryItem& item, long value) { return item.offset < value; });
    return static_cast<int>(at - items.begin());
}

std::pair<int, int> TextMap::zeroWidthRun(int from) const {
    int to = from;
    while (to < static_cast<int>(items.size()) && items[to].width == 0) {
        ++to;
    }
    return {from, to};
}

Cut TextMap::startCut(long offset) const {
    offset = std::clamp(offset, first_, length_);
    const int at = firstAtOrAfter(offset);
    if (at > 0 && items[at - 1].kind == ItemKind::Text &&
        items[at - 1].offset + items[at - 1].width > offset) {
        const auto& item = items[at - 1];
        return {at - 1, utf16::snap(textOf(item), offset - item.offset, false)};
    }
    const auto [from, to] = zeroWidthRun(at);
    for (int i = from; i < to; ++i) {
        // A field that merely passes by (no result) does not hold the typing position back.
        if (isFieldOpen(items[i].kind) && fields[items[i].field].end >= to) {
            return {i, 0};
        }
    }
    return {to, 0};
}

Cut TextMap::endCut(long offset) const {
    offset = std::clamp(offset, first_, length_);
    const int at = firstAtOrAfter(offset);
    if (at > 0 && items[at - 1].kind == ItemKind::Text &&
        items[at - 1].offset + items[at - 1].width > offset) {
        const auto& item = items[at - 1];
        const long inner = utf16::snap(textOf(item), offset - item.offset, true);
        return inner >= item.width ? Cut{at, 0} : Cut{at - 1, inner};
    }
    const auto [from, to] = zeroWidthRun(at);
    for (int i = to - 1; i >= from; --i) {
        if (isFieldClose(items[i].kind) && fields[items[i].field].begin < from) {
            return {i + 1, 0};
        }
    }
    return {from, 0};
}

long TextMap::offsetOf(const Cut& cut) const {
    if (cut.item >= static_cast<int>(items.size())) {
        return length_;
    }
    return items[cut.item].offset + cut.inner;
}

long TextMap::resultStart(int field) const {
    const auto& span = fields[field];
    return items[span.separate >= 0 ? span.separate : span.end].offset;
}

int TextMap::fieldOf(pugi::xml_node node) const {
    if (fieldByBegin_.empty() && !fields.empty()) {
        fieldByBegin_.reserve(fields.size());
        for (int f = 0; f < static_cast<int>(fields.size()); ++f) {
            fieldByBegin_.emplace(items[fields[f].begin].node.internal_object(), f);
        }
    }
    const auto found = fieldByBegin_.find(node.internal_object());
    return found == fieldByBegin_.end() || !node ? -1 : found->second;
}

// Fields are listed by their begins, so those starting within the span form one stretch of the list.
std::vector<int> TextMap::fieldsWithin(long start, long end) const {
    std::vector<int> found;
    const auto first = std::partition_point(fields.begin(), fields.end(), [&](const FieldSpan& span) {
        return items[static_cast<std::size_t>(span.begin)].offset < start;
    });
    for (int f = static_cast<int>(first - fields.begin());
         f < static_cast<int>(fields.size()) && fieldStart(f) <= end; ++f) {
        if (fieldEnd(f) <= end) {
            found.push_back(f);
        }
    }
    return found;
}

std::vector<int> TextMap::fieldsInside(int field) const {
    std::vector<int> found;
    for (int f = field + 1; f < static_cast<int>(fields.size()) && fields[f].begin < fields[field].end; ++f) {
        found.push_back(f);
    }
    return found;
}

} // namespace wordbm::ooxml
