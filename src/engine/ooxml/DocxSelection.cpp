#include "engine/ooxml/DocxSelection.h"

#include "engine/ooxml/DocxDocument.h"
#include "engine/ooxml/DocxFont.h"
#include "engine/ooxml/DocxRange.h"
#include "engine/ooxml/DrawingNamespaces.h"
#include "engine/ooxml/InlinePicture.h"
#include "engine/ooxml/MediaParts.h"
#include "engine/word/AutomationError.h"
#include "qrbill/ImageSlot.h"

#include <algorithm>
#include <cmath>

namespace wordbm::ooxml {

namespace {

constexpr double EmuPerMillimetre = 36000.0;

} // namespace

SelectionState& DocxSelection::state() const {
    document_->check();
    auto& selection = document_->selection();
    if (!selection.story || !selection.story->alive()) {
        selection = {};
        selection.story = &document_->stories().main();
    }
    if (selection.part != FieldPart::None && !selection.story->fieldAlive(selection.field)) {
        // The selected field went meanwhile: what remains is the place where it was.
        selection.part = FieldPart::None;
        selection.field = {};
    }
    return selection;
}

Story& DocxSelection::story() const {
    return *state().story;
}

long DocxSelection::Start() const {
    auto& selection = state();
    return std::min(selection.start(), selection.story->length());
}

long DocxSelection::End() const {
    auto& selection = state();
    return std::min(selection.end(), selection.story->length());
}

std::string DocxSelection::Text() const {
    auto& selection = state();
    return DocxRange(document_, selection.story, selection.span()).Text();
}

word::RangePtr DocxSelection::Range() {
    auto& selection = state();
    return std::make_shared<DocxRange>(document_, selection.story, selection.span());
}

word::FontPtr DocxSelection::Font() {
    auto& selection = state();
    return std::make_shared<DocxFont>(document_, selection.story, selection.span());
}

int DocxSelection::HomeKey(int unit, int extend) {
    auto& selection = state();
    if (unit != word::wd::wdStory) {
        throw AutomationError("HomeKey kennt hier nur die Einheit wdStory (6).");
    }
    const long moved = selection.active;
    const long anchor = selection.anchor;
    selection.collapseTo(0);
    if (extend == word::wd::wdExtend) {
        selection.anchor = anchor;
    }
    return static_cast<int>(moved);
}

void DocxSelection::TypeText(const std::string& text) {
    auto& selection = state();
    const auto [start, end] = document_->replace(*selection.story, selection.span(), text);
    selection.collapseTo(end);
}

long DocxSelection::step(long offset, int direction) const {
    auto& story = this->story();
    const auto& map = story.window(std::max(0L, offset - 2), std::min(story.length(), offset + 2)).map;
    const auto text = direction < 0 ? map.text(offset - 2, offset) : map.text(offset, offset + 2);
    const bool pair = text.size() == 4 && static_cast<unsigned char>(text[0]) >= 0xF0;
    return pair ? 2 : 1;
}

int DocxSelection::move(int unit, int count, int extend, int direction) {
    auto& selection = state();
    if (unit != word::wd::wdCharacter) {
        throw AutomationError("Die Auswahl bewegt sich hier nur zeichenweise (wdCharacter, 1).");
    }
    const long length = selection.story->length();
    // A cursor cannot stand behind the story's last paragraph mark; an extended selection may hold it.
    const long limit = extend == word::wd::wdExtend ? length : std::max(0L, length - 1);
    int moved = 0;
    if (extend != word::wd::wdExtend && selection.start() != selection.end() && count > 0) {
        selection.collapseTo(direction < 0 ? selection.start() : selection.end());
        ++moved;
        --count;
    }
    selection.part = FieldPart::None;
    selection.field = {};
    for (; count > 0; --count) {
        const long next = selection.active + direction * step(selection.active, direction);
        if (next < 0 || next > limit) {
            break;
        }
        selection.active = next;
        ++moved;
    }
    if (extend != word::wd::wdExtend) {
        selection.anchor = selection.active;
    }
    return moved;
}

int DocxSelection::MoveLeft(int unit, int count, int extend) {
    return move(unit, count, extend, -1);
}

int DocxSelection::MoveRight(int unit, int count, int extend) {
    return move(unit, count, extend, +1);
}

void DocxSelection::TypeBackspace() {
    auto& selection = state();
    auto span = selection.span();
    if (span.collapsed()) {
        if (span.start == 0) {
            return;
        }
        span.start -= step(span.start, -1);
    }
    const auto [start, end] = document_->replace(*selection.story, span, "");
    selection.collapseTo(start);
}

void DocxSelection::Paste() {
    auto& selection = state();
    const auto image = ImageSlot::instance().read();
    if (!image || image->png.empty()) {
        throw AutomationError("Es liegt kein Bild zum Einfügen bereit.");
    }
    auto& story = *selection.story;
    auto& package = document_->package();
    const auto relationship =
        MediaParts::add(package, story.partName(), std::string(image->png.begin(), image->png.end()), "png");
    const unsigned id = document_->nextDrawingId();
    pugi::xml_document holder;
    const auto run = InlinePicture::build(
        holder, relationship, std::llround(image->widthMm * EmuPerMillimetre),
        std::llround(image->heightMm * EmuPerMillimetre), id, "Picture " + std::to_string(id));
    const auto [start, end] = document_->replace(story, selection.span(), "", run);
    DrawingNamespaces::declare(story.root());
    document_->drawingsChanged(story);
    selection.collapseTo(end);
}

void DocxSelection::SetRange(long start, long end) {
    auto& selection = state();
    const long length = selection.story->length();
    selection.collapseTo(std::clamp(start, 0L, length));
    selection.active = std::clamp(end, selection.anchor, length);
}

} // namespace wordbm::ooxml
