#include "engine/ooxml/StoryEditor.h"

#include "engine/ooxml/RunSplitter.h"
#include "engine/ooxml/SchemaOrder.h"
#include "engine/ooxml/TextWriter.h"
#include "engine/word/AutomationError.h"

#include <algorithm>
#include <set>

namespace wordbm::ooxml {

namespace {

bool before(const Cut& a, const Cut& b) {
    return a.item < b.item || (a.item == b.item && a.inner < b.inner);
}

int lastParagraphMark(const TextMap& map) {
    for (int i = static_cast<int>(map.items.size()) - 1; i >= 0; --i) {
        if (map.items[i].kind == ItemKind::ParagraphMark) {
            return i;
        }
    }
    throw AutomationError("Der Textbereich enthält keinen Absatz.");
}

pugi::xml_node runPropertiesOf(pugi::xml_node leaf) {
    const auto run = leaf.parent();
    return std::string_view(run.name()) == "w:r" ? run.child("w:rPr") : pugi::xml_node();
}

bool isCharacter(const StoryItem& item) {
    return item.width > 0 && (item.kind == ItemKind::Text || item.kind == ItemKind::Special);
}

} // namespace

const StoryWindow& StoryEditor::windowOf(const Span& span) {
    if (span.part == FieldPart::None) {
        return story_.window(span.start, span.end);
    }
    if (!story_.fieldAlive(span.field)) {
        throw AutomationError("Das Feld ist nicht mehr vorhanden.");
    }
    return story_.windowHolding(span.field);
}

std::pair<Cut, Cut> StoryEditor::cuts(const TextMap& map, const Span& span) const {
    if (span.part == FieldPart::None) {
        const Cut from = map.startCut(span.start);
        const Cut to = span.end > span.start ? map.endCut(span.end) : from;
        return {from, before(to, from) ? from : to};
    }
    const int field = map.fieldOf(span.field);
    if (field < 0) {
        throw AutomationError("Das Feld ist nicht mehr vorhanden.");
    }
    const auto& f = map.fields[field];
    switch (span.part) {
    case FieldPart::Whole:
        return {{f.begin, 0}, {f.end + 1, 0}};
    case FieldPart::Result:
        return f.separate >= 0 ? std::pair<Cut, Cut>{{f.separate + 1, 0}, {f.end, 0}}
                               : std::pair<Cut, Cut>{{f.end, 0}, {f.end, 0}};
    default:
        return {{f.begin + 1, 0}, {f.separate >= 0 ? f.separate : f.end, 0}};
    }
}

bool StoryEditor::ensureParagraph() {
    if (story_.hasParagraph()) {
        return false;
    }
    auto root = story_.root();
    if (auto section = root.child("w:sectPr")) {
        root.insert_child_before("w:p", section);
    } else {
        root.append_child("w:p");
    }
    story_.changed();
    return true;
}

StoryEditor::Split StoryEditor::splitAt(const Span& span, bool forInsertion) {
    ensureParagraph();
    for (int round = 0; round < 2; ++round) {
        const auto& window = windowOf(span);
        const auto& map = window.map;
        auto [from, to] = cuts(map, span);
        if (forInsertion) {
            // Nothing can follow the story's last paragraph mark.
            const int last = lastParagraphMark(map);
            if (from.item > last) {
                from = {last, 0};
            }
            if (before(to, from)) {
                to = from;
            }
        }
        if (from.inner == 0 && to.inner == 0) {
            return {&window, from.item, to.item};
        }
        if (to.inner > 0) {
            RunSplitter::splitText(map.items[to.item].node, to.inner);
        }
        if (from.inner > 0 && (from.item != to.item || from.inner != to.inner)) {
            RunSplitter::splitText(map.items[from.item].node, from.inner);
        }
        story_.edited(window);
    }
    throw AutomationError("Der Text lässt sich an dieser Stelle nicht teilen.");
}

std::pair<long, long> StoryEditor::replace(const Span& span, std::string_view text, pugi::xml_node run) {
    ensureParagraph();
    const long start = [&] {
        const auto& map = windowOf(span).map;
        const auto [from, to] = cuts(map, span);
        // The template is taken before anything moves: the character at the start may be deleted.
        properties(map, from, to, span);
        return std::min(map.offsetOf(from), map.length() - 1);
    }();
    const auto [window, from, to] = splitAt(span, true);
    const auto& map = window->map;
    const auto at = RunSplitter::before(map, from);
    if (from < to) {
        SpanDeleter(map, removing_).erase(from, to);
    }
    TextWriter writer(at, kept_.first_child());
    long units = writer.write(text);
    if (run) {
        writer.writeRun(run);
        ++units;
    }
    story_.edited(*window);
    return {start, start + units};
}

// The run properties typed text takes: those of the first character replaced, or, when nothing is
// replaced, of the character before the cursor in its paragraph, else after it, else the mark's.
pugi::xml_node StoryEditor::properties(const TextMap& map, const Cut& from, const Cut& to, const Span& span) {
    const auto& items = map.items;
    const int size = static_cast<int>(items.size());
    if (span.part == FieldPart::Whole) {
        const auto& f = map.fields[map.fieldOf(span.field)];
        for (int i = f.separate + 1; f.separate >= 0 && i < f.end; ++i) {
            if (isCharacter(items[i])) {
                return keep(runPropertiesOf(items[i].node));
            }
        }
        return keep(f.simple ? pugi::xml_node() : runPropertiesOf(items[f.begin].node));
    }
    if (from.inner > 0) {
        return keep(runPropertiesOf(items[from.item].node));
    }
    const bool replacing = before(from, to);
    for (int i = from.item; replacing && i < std::min(to.item + 1, size); ++i) {
        if (isCharacter(items[i])) {
            return keep(runPropertiesOf(items[i].node));
        }
        if (items[i].kind == ItemKind::ParagraphMark) {
            break;
        }
    }
    for (int i = std::min(from.item, size) - 1; !replacing && i >= 0; --i) {
        if (items[i].kind == ItemKind::ParagraphMark) {
            break;
        }
        if (isCharacter(items[i])) {
            return keep(runPropertiesOf(items[i].node));
        }
    }
    for (int i = from.item; i < size; ++i) {
        if (items[i].kind == ItemKind::ParagraphMark) {
            return keep(items[i].node.child("w:pPr").child("w:rPr"));
        }
        if (isCharacter(items[i])) {
            return keep(runPropertiesOf(items[i].node));
        }
    }
    return keep({});
}

pugi::xml_node StoryEditor::keep(pugi::xml_node runProperties) {
    kept_.reset();
    if (!runProperties) {
        return {};
    }
    auto copy = kept_.append_copy(runProperties);
    copy.set_name("w:rPr");
    // Revision marks belong to the original text, not to what is typed now.
    for (const char* revision : {"w:ins", "w:del", "w:moveFrom", "w:moveTo", "w:rPrChange"}) {
        while (copy.remove_child(revision)) {
        }
    }
    return copy;
}

void StoryEditor::addBookmark(const Span& span, const std::string& name, const std::string& id) {
    const auto [window, from, to] = splitAt(span, false);
    const auto& map = window->map;
    pugi::xml_node start;
    pugi::xml_node end;
    if (from == to && span.part == FieldPart::None) {
        auto at = RunSplitter::before(map, from);
        start = at.insert("w:bookmarkStart");
        end = at.insert("w:bookmarkEnd");
    } else {
        auto atEnd = RunSplitter::before(map, to);
        end = atEnd.insert("w:bookmarkEnd");
        auto atStart = RunSplitter::before(map, from);
        start = atStart.insert("w:bookmarkStart");
    }
    start.append_attribute("w:id") = id.c_str();
    start.append_attribute("w:name") = name.c_str();
    end.append_attribute("w:id") = id.c_str();
    story_.edited(*window);
}

void StoryEditor::removeBookmark(const std::string& id, pugi::xml_node start, pugi::xml_node end) {
    if (start && end) {
        const auto& window = story_.windowBetween(start, end);
        start.parent().remove_child(start);
        end.parent().remove_child(end);
        story_.edited(window);
        return;
    }
    std::vector<pugi::xml_node> markers;
    for (const auto& item : story_.map().items) {
        const bool marker = item.kind == ItemKind::BookmarkStart || item.kind == ItemKind::BookmarkEnd;
        if (marker && id == item.node.attribute("w:id").value()) {
            markers.push_back(item.node);
        }
    }
    for (auto marker : markers) {
        marker.parent().remove_child(marker);
    }
    story_.changed();
}

void StoryEditor::setFieldCode(pugi::xml_node field, std::string_view code) {
    const auto& window = windowOf(Span{0, 0, FieldPart::Code, field});
    const auto& map = window.map;
    const int index = map.fieldOf(field);
    if (index < 0) {
        throw AutomationError("Das Feld ist nicht mehr vorhanden.");
    }
    const auto& f = map.fields[index];
    if (f.simple) {
        field.attribute("w:instr").set_value(std::string(code).c_str());
        story_.edited(window);
        return;
    }
    // The old code goes whole, nested fields included; the new one is a single instrText run.
    const int stop = f.separate >= 0 ? f.separate : f.end;
    std::set<pugi::xml_node> runs;
    std::vector<pugi::xml_node> leaves;
    for (int i = f.begin + 1; i < stop; ++i) {
        const auto node = map.items[i].node;
        if (std::string_view(node.parent().name()) == "w:r") {
            leaves.push_back(node);
            runs.insert(node.parent());
        }
    }
    const auto beginRun = field.parent();
    for (auto leaf : leaves) {
        if (removing_) {
            removing_(leaf);
        }
        leaf.parent().remove_child(leaf);
    }
    for (auto run : runs) {
        if (run != beginRun && !run.find_child([](pugi::xml_node c) {
                return std::string_view(c.name()) != "w:rPr" && c.type() == pugi::node_element;
            })) {
            run.parent().remove_child(run);
        }
    }
    auto run = beginRun.parent().insert_child_after("w:r", beginRun);
    if (auto properties = beginRun.child("w:rPr")) {
        run.append_copy(properties);
    }
    auto instr = run.append_child("w:instrText");
    instr.append_attribute("xml:space") = "preserve";
    instr.text().set(std::string(code).c_str());
    story_.edited(window);
}

void StoryEditor::format(const Span& span, const std::function<void(pugi::xml_node)>& change) {
    const auto [window, from, to] = splitAt(span, false);
    const auto& map = window->map;
    if (from >= to) {
        for (int i = from; i < static_cast<int>(map.items.size()); ++i) {
            if (map.items[i].kind == ItemKind::ParagraphMark) {
                change(SchemaOrder::child(SchemaOrder::child(map.items[i].node, "w:pPr"), "w:rPr"));
                break;
            }
        }
        story_.edited(*window);
        return;
    }
    RunSplitter::before(map, to);
    RunSplitter::before(map, from);
    std::vector<pugi::xml_node> targets;
    for (int i = from; i < to; ++i) {
        const auto& item = map.items[i];
        if (item.kind == ItemKind::ParagraphMark) {
            targets.push_back(SchemaOrder::child(SchemaOrder::child(item.node, "w:pPr"), "w:rPr"));
        } else if (isCharacter(item) && std::string_view(item.node.parent().name()) == "w:r") {
            auto properties = SchemaOrder::child(item.node.parent(), "w:rPr");
            if (std::find(targets.begin(), targets.end(), properties) == targets.end()) {
                targets.push_back(properties);
            }
        }
    }
    for (auto properties : targets) {
        change(properties);
    }
    story_.edited(*window);
}

} // namespace wordbm::ooxml
