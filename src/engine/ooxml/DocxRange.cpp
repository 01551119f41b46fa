#include "engine/ooxml/DocxRange.h"

#include "engine/ooxml/DocxBookmarks.h"
#include "engine/ooxml/DocxDocument.h"
#include "engine/ooxml/DocxFields.h"
#include "engine/ooxml/DocxFont.h"
#include "engine/ooxml/Story.h"
#include "engine/word/AutomationError.h"

#include <algorithm>

namespace wordbm::ooxml {

DocxRange::DocxRange(std::shared_ptr<DocxDocument> document, Story* story, Span span)
    : document_(std::move(document)), story_(story), span_(span) {
    if (span_.part != FieldPart::None && story_) {
        current();
    }
}

Span DocxRange::current() const {
    document_->check();
    if (!story_) {
        return {};
    }
    if (!story_->alive()) {
        throw AutomationError("Der Textbereich gehört zu einer gelöschten Form.");
    }
    if (span_.part == FieldPart::None || !story_->fieldAlive(span_.field)) {
        // Plain offsets, or a field deleted meanwhile: as in Word, the range collapses where it began.
        const long length = story_->length();
        const long start = std::clamp(span_.start, 0L, length);
        return {start, span_.part == FieldPart::None ? std::clamp(span_.end, start, length) : start};
    }
    const auto& map = story_->windowHolding(span_.field).map;
    const int field = map.fieldOf(span_.field);
    switch (span_.part) {
    case FieldPart::Whole:
        span_ = {map.fieldStart(field), map.fieldEnd(field), FieldPart::Whole, span_.field};
        break;
    case FieldPart::Result:
        span_ = {map.resultStart(field), map.fieldEnd(field), FieldPart::Result, span_.field};
        break;
    default:
        span_ = {map.fieldStart(field), map.fieldStart(field), FieldPart::Code, span_.field};
    }
    return span_;
}

Story& DocxRange::editable() const {
    if (!story_) {
        throw AutomationError("Diese Kopf- oder Fusszeile ist nicht vorhanden.");
    }
    current();
    return *story_;
}

long DocxRange::Start() const {
    return current().start;
}

long DocxRange::End() const {
    return current().end;
}

int DocxRange::StoryType() const {
    document_->check();
    return story_ ? story_->wordType() : 1;
}

std::string DocxRange::Text() const {
    const auto span = current();
    if (!story_) {
        return {};
    }
    if (span.part == FieldPart::Code) {
        const auto& map = story_->windowHolding(span.field).map;
        return map.fields[map.fieldOf(span.field)].code;
    }
    return story_->window(span.start, span.end).map.text(span.start, span.end);
}

void DocxRange::Text(const std::string& text) {
    auto& story = editable();
    const auto span = current();
    if (span.part == FieldPart::Code) {
        document_->setFieldCode(story, span.field, text);
        return;
    }
    const auto [start, end] = document_->replace(story, span, text);
    // As in Word, the range then covers the new text (a whole field is gone: plain offsets now).
    span_ = span.part == FieldPart::Result ? span : Span{start, end};
}

void DocxRange::InsertAfter(const std::string& text) {
    auto& story = editable();
    const auto span = current();
    const auto [start, end] = document_->replace(story, Span{span.end, span.end}, text);
    if (span_.part == FieldPart::None) {
        span_ = {std::min(span.start, start), end};
    }
}

word::FieldsPtr DocxRange::Fields() {
    const auto span = current();
    if ((span.part == FieldPart::Code || span.part == FieldPart::Result) && span.field) {
        return std::make_shared<DocxFields>(document_, story_, span.field, span.part);
    }
    return std::make_shared<DocxFields>(document_, story_, span.start, span.end);
}

word::BookmarksPtr DocxRange::Bookmarks() {
    const auto span = current();
    return std::make_shared<DocxBookmarks>(document_, story_, span.start, span.end);
}

word::FontPtr DocxRange::Font() {
    return std::make_shared<DocxFont>(document_, story_, current());
}

void DocxRange::Select() {
    const auto span = current();
    if (!story_) {
        throw AutomationError("Diese Kopf- oder Fusszeile ist nicht vorhanden.");
    }
    auto& selection = document_->selection();
    selection.story = story_;
    selection.anchor = span.start;
    selection.active = span.end;
    selection.part = span.part == FieldPart::Code ? FieldPart::None : span.part;
    selection.field = selection.part == FieldPart::None ? pugi::xml_node() : span.field;
}

void DocxRange::SetRange(long start, long end) {
    current();
    const long length = story_ ? story_->length() : 0;
    const long from = std::clamp(start, 0L, length);
    span_ = Span{from, std::clamp(end, from, length)};
}

} // namespace wordbm::ooxml
