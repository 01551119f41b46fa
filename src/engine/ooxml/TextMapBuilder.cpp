#include "engine/ooxml/TextMapBuilder.h"

#include "engine/ooxml/Utf16.h"
#include "engine/ooxml/XmlTree.h"

#include <algorithm>
#include <string_view>
#include <unordered_map>

namespace wordbm::ooxml {

namespace {

struct Frame {
    pugi::xml_node element;
    pugi::xml_node next;
    bool deleted;
};

bool oneOf(std::string_view name, std::initializer_list<std::string_view> names) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

bool isContainer(std::string_view name) {
    return oneOf(name,
                 {"w:body",       "w:hdr",       "w:ftr",      "w:txbxContent", "w:footnotes", "w:endnotes",
                  "w:comments",   "w:comment",   "w:tbl",      "w:tr",          "w:tc",        "w:sdt",
                  "w:sdtContent", "w:customXml", "w:smartTag", "w:hyperlink",   "w:ins",       "w:moveTo",
                  "w:dir",        "w:bdo",       "w:p"});
}

bool isSeparatorNote(pugi::xml_node note) {
    const std::string_view type = note.attribute("w:type").value();
    return !type.empty() && type != "normal";
}

// An object in a run takes a character only when it stands in the line (inline); a floating one is
// anchored at the paragraph and takes none.
bool isInlineObject(pugi::xml_node child) {
    auto node = child;
    if (std::string_view(child.name()) == "mc:AlternateContent") {
        node = child.child("mc:Choice").first_child();
        if (!node) {
            node = child.child("mc:Fallback").first_child();
        }
    }
    const std::string_view name = node.name();
    if (name == "w:drawing") {
        return static_cast<bool>(node.child("wp:inline"));
    }
    if (name == "w:object") {
        return true;
    }
    if (name == "w:pict") {
        for (auto shape = node.first_child(); shape; shape = shape.next_sibling()) {
            const std::string_view style = shape.attribute("style").value();
            if (style.find("position:absolute") != std::string_view::npos) {
                return false;
            }
        }
        return true;
    }
    return false;
}

bool isOneCharacter(std::string_view name) {
    return oneOf(name, {"w:tab", "w:ptab", "w:br", "w:cr", "w:sym", "w:noBreakHyphen", "w:softHyphen",
                        "w:footnoteReference", "w:endnoteReference", "w:footnoteRef", "w:endnoteRef",
                        "w:annotationRef", "w:commentReference", "w:pgNum"});
}

} // namespace

TextMap TextMapBuilder::build(pugi::xml_node storyRoot) {
    return build(storyRoot, storyRoot.first_child(), {}, 0);
}

TextMap TextMapBuilder::build(pugi::xml_node storyRoot, pugi::xml_node first, pugi::xml_node stop,
                              long base) {
    TextMap map;
    TextMapBuilder builder(map);
    builder.walk(storyRoot, first, stop);
    builder.matchFields();
    builder.measure(base);
    builder.matchBookmarks();
    return map;
}

void TextMapBuilder::walk(pugi::xml_node root, pugi::xml_node first, pugi::xml_node stop) {
    std::vector<Frame> stack;
    stack.push_back({root, first, false});
    while (!stack.empty()) {
        auto& frame = stack.back();
        if (!frame.next || (stack.size() == 1 && frame.next == stop)) {
            leave(frame.element, frame.deleted);
            stack.pop_back();
            continue;
        }
        const auto node = frame.next;
        frame.next = node.next_sibling();
        const bool deleted = frame.deleted;
        if (node.type() != pugi::node_element) {
            continue;
        }
        const std::string_view name = node.name();
        if (name == "w:r") {
            runChildren(node, deleted);
        } else if (name == "mc:AlternateContent") {
            // Word reads the first alternative it understands; ours is always the Choice.
            if (auto choice = node.child("mc:Choice")) {
                stack.push_back({choice, choice.first_child(), deleted});
            }
        } else if (enter(node, deleted)) {
            const bool nowDeleted = deleted || name == "w:del" || name == "w:moveFrom";
            stack.push_back({node, node.first_child(), nowDeleted});
        }
    }
}

bool TextMapBuilder::enter(pugi::xml_node element, bool deleted) {
    const std::string_view name = element.name();
    if (name == "w:bookmarkStart") {
        add(element, ItemKind::BookmarkStart);
        return false;
    }
    if (name == "w:bookmarkEnd") {
        add(element, ItemKind::BookmarkEnd);
        return false;
    }
    if (name == "w:fldSimple") {
        add(element, deleted ? ItemKind::Neutral : ItemKind::SimpleFieldBegin);
        return true;
    }
    if (name == "w:footnote" || name == "w:endnote") {
        return !isSeparatorNote(element);
    }
    return isContainer(name) || name == "w:del" || name == "w:moveFrom";
}

void TextMapBuilder::leave(pugi::xml_node element, bool deleted) {
    const std::string_view name = element.name();
    if (name == "w:p") {
        add(element, ItemKind::ParagraphMark);
    } else if (name == "w:fldSimple") {
        // Inside deleted text the begin was taken as neutral; so is the end.
        add(element, deleted ? ItemKind::Neutral : ItemKind::SimpleFieldEnd);
    }
}

void TextMapBuilder::runChildren(pugi::xml_node run, bool deleted) {
    for (auto child = run.first_child(); child; child = child.next_sibling()) {
        if (child.type() == pugi::node_element) {
            runChild(child, deleted);
        }
    }
}

void TextMapBuilder::runChild(pugi::xml_node child, bool deleted) {
    const std::string_view name = child.name();
    if (name == "w:rPr") {
        return;
    }
    if (deleted) {
        add(child, ItemKind::Neutral);
    } else if (name == "w:t") {
        add(child, ItemKind::Text);
    } else if (name == "w:instrText") {
        add(child, ItemKind::Hidden);
    } else if (name == "w:fldChar") {
        const std::string_view type = child.attribute("w:fldCharType").value();
        add(child, type == "begin"      ? ItemKind::FieldBegin
                   : type == "separate" ? ItemKind::FieldSeparate
                   : type == "end"      ? ItemKind::FieldEnd
                                        : ItemKind::Neutral);
    } else if (isOneCharacter(name)) {
        add(child, ItemKind::Special);
    } else if (name == "w:drawing" || name == "w:pict" || name == "w:object" ||
               name == "mc:AlternateContent") {
        add(child, isInlineObject(child) ? ItemKind::Special : ItemKind::Neutral);
    } else {
        add(child, ItemKind::Neutral);
    }
}

void TextMapBuilder::add(pugi::xml_node node, ItemKind kind) {
    StoryItem item;
    item.node = node;
    item.kind = kind;
    map_.items.push_back(item);
}

// Pairs begin and end with a stack; a separate belongs to the innermost open field. Whatever does
// not pair up (a damaged form) is treated as neutral, so it neither hides text nor breaks edits.
void TextMapBuilder::matchFields() {
    auto& items = map_.items;
    std::vector<int> open;
    std::vector<int> separateOf(items.size(), -1);
    std::vector<int> endOf(items.size(), -1);
    for (int i = 0; i < static_cast<int>(items.size()); ++i) {
        switch (items[i].kind) {
        case ItemKind::FieldBegin:
        case ItemKind::SimpleFieldBegin:
            open.push_back(i);
            break;
        case ItemKind::FieldSeparate:
            if (!open.empty() && items[open.back()].kind == ItemKind::FieldBegin &&
                separateOf[open.back()] < 0) {
                separateOf[open.back()] = i;
            } else {
                items[i].kind = ItemKind::Neutral;
            }
            break;
        case ItemKind::FieldEnd:
            // An end inside a simple field whose begin lies outside it crosses the XML nesting.
            if (!open.empty() && items[open.back()].kind == ItemKind::FieldBegin) {
                endOf[open.back()] = i;
                open.pop_back();
            } else {
                items[i].kind = ItemKind::Neutral;
            }
            break;
        case ItemKind::SimpleFieldEnd:
            // The XML nests simple fields; a complex field still open inside one crosses its end.
            while (items[open.back()].kind != ItemKind::SimpleFieldBegin) {
                items[open.back()].kind = ItemKind::Neutral;
                open.pop_back();
            }
            endOf[open.back()] = i;
            open.pop_back();
            break;
        default:
            break;
        }
    }
    for (const int unmatched : open) {
        items[unmatched].kind = ItemKind::Neutral;
    }
    for (int i = 0; i < static_cast<int>(items.size()); ++i) {
        if (items[i].kind != ItemKind::FieldBegin && items[i].kind != ItemKind::SimpleFieldBegin) {
            if (separateOf[i] >= 0) {
                items[separateOf[i]].kind = ItemKind::Neutral;
            }
            continue;
        }
        FieldSpan span;
        span.begin = i;
        span.end = endOf[i];
        span.simple = items[i].kind == ItemKind::SimpleFieldBegin;
        span.separate = span.simple ? i : separateOf[i];
        if (span.simple) {
            span.code = items[i].node.attribute("w:instr").value();
        }
        const int index = static_cast<int>(map_.fields.size());
        items[i].field = index;
        items[span.end].field = index;
        if (span.separate >= 0) {
            items[span.separate].field = index;
        }
        map_.fields.push_back(span);
    }
}

// Gives every item its offset and width. Text inside a field code (up to its separate) is not
// visible; it is added to the code of the innermost field and of every field whose code holds it.
void TextMapBuilder::measure(long base) {
    auto& items = map_.items;
    std::vector<int> open;    // fields entered, innermost last
    std::vector<bool> inCode; // parallel: still before the separate
    int codeDepth = 0;
    long offset = base;
    map_.setFirst(base);
    const auto appendCode = [&](std::string_view text) {
        for (int level = static_cast<int>(open.size()) - 1; level >= 0 && inCode[level]; --level) {
            map_.fields[open[level]].code.append(text);
        }
    };
    for (auto& item : items) {
        item.offset = offset;
        switch (item.kind) {
        case ItemKind::FieldBegin:
        case ItemKind::SimpleFieldBegin: {
            const bool code = item.kind == ItemKind::FieldBegin;
            map_.fields[item.field].parent = open.empty() ? -1 : open.back();
            open.push_back(item.field);
            inCode.push_back(code);
            codeDepth += code ? 1 : 0;
            break;
        }
        case ItemKind::FieldSeparate:
            if (inCode.back()) {
                inCode.back() = false;
                --codeDepth;
            }
            break;
        case ItemKind::FieldEnd:
        case ItemKind::SimpleFieldEnd:
            codeDepth -= inCode.back() ? 1 : 0;
            open.pop_back();
            inCode.pop_back();
            break;
        case ItemKind::Hidden:
            if (!open.empty() && inCode.back()) {
                appendCode(item.node.child_value());
            } else if (codeDepth == 0) {
                item.kind = ItemKind::Neutral; // stray instrText outside any code
            }
            break;
        case ItemKind::Text:
            if (codeDepth > 0) {
                if (inCode.back()) {
                    appendCode(item.node.child_value());
                }
                item.kind = ItemKind::Hidden;
            } else {
                item.width = static_cast<std::int32_t>(utf16::length(item.node.child_value()));
            }
            break;
        case ItemKind::Special:
            if (codeDepth > 0) {
                item.kind = ItemKind::Hidden;
            } else {
                item.width = 1;
            }
            break;
        case ItemKind::ParagraphMark:
            item.width = 1;
            break;
        default:
            break;
        }
        offset += item.width;
    }
    map_.setLength(offset);
}

void TextMapBuilder::matchBookmarks() {
    std::unordered_map<std::string, std::size_t> openById;
    for (int i = 0; i < static_cast<int>(map_.items.size()); ++i) {
        const auto& item = map_.items[i];
        if (item.kind == ItemKind::BookmarkStart) {
            const std::string id = item.node.attribute("w:id").value();
            if (openById.count(id) == 0) {
                BookmarkSpan span;
                span.name = item.node.attribute("w:name").value();
                span.id = id;
                span.startItem = i;
                span.start = item.offset;
                openById[id] = map_.bookmarks.size();
                map_.bookmarks.push_back(span);
            }
        } else if (item.kind == ItemKind::BookmarkEnd) {
            const auto found = openById.find(item.node.attribute("w:id").value());
            if (found != openById.end()) {
                auto& span = map_.bookmarks[found->second];
                span.endItem = i;
                span.end = std::max(item.offset, span.start);
                openById.erase(found);
            }
        }
    }
    std::erase_if(map_.bookmarks, [](const BookmarkSpan& span) { return span.endItem < 0; });
}

} // namespace wordbm::ooxml
