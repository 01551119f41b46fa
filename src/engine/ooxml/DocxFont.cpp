#include "engine/ooxml/DocxFont.h"

#include "engine/ooxml/DocxDocument.h"
#include "engine/ooxml/RunFormat.h"
#include "engine/ooxml/Story.h"
#include "engine/word/AutomationError.h"

namespace wordbm::ooxml {

DocxFont::DocxFont(std::shared_ptr<DocxDocument> document, Story* story, Span span)
    : document_(std::move(document)), story_(story), span_(span) {}

// The first character at or after the span's start in its paragraph; the paragraph mark when the
// paragraph has none there.
DocxFont::Source DocxFont::source() const {
    document_->check();
    if (!story_ || !story_->alive()) {
        return {};
    }
    const auto& map = story_->map();
    for (int i = map.startCut(span_.start).item; i < static_cast<int>(map.items.size()); ++i) {
        const auto& item = map.items[i];
        if (item.kind == ItemKind::ParagraphMark) {
            return {item.node.child("w:pPr").child("w:rPr"), item.node};
        }
        if (item.width > 0 && (item.kind == ItemKind::Text || item.kind == ItemKind::Special)) {
            auto paragraph = item.node;
            while (paragraph && std::string_view(paragraph.name()) != "w:p") {
                paragraph = paragraph.parent();
            }
            return {item.node.parent().child("w:rPr"), paragraph};
        }
    }
    return {};
}

std::string DocxFont::Name() const {
    const auto at = source();
    return RunFormat::of(document_->package(), at.runProperties, at.paragraph).font;
}

float DocxFont::Size() const {
    const auto at = source();
    return RunFormat::of(document_->package(), at.runProperties, at.paragraph).size;
}

bool DocxFont::Bold() const {
    const auto at = source();
    return RunFormat::of(document_->package(), at.runProperties, at.paragraph).bold;
}

void DocxFont::Name(const std::string& name) {
    if (!story_) {
        throw AutomationError("Diese Kopf- oder Fusszeile ist nicht vorhanden.");
    }
    document_->format(*story_, span_,
                      [&](pugi::xml_node properties) { RunFormat::setFont(properties, name); });
}

void DocxFont::Size(float points) {
    if (!story_) {
        throw AutomationError("Diese Kopf- oder Fusszeile ist nicht vorhanden.");
    }
    document_->format(*story_, span_,
                      [&](pugi::xml_node properties) { RunFormat::setSize(properties, points); });
}

void DocxFont::Bold(bool bold) {
    if (!story_) {
        throw AutomationError("Diese Kopf- oder Fusszeile ist nicht vorhanden.");
    }
    document_->format(*story_, span_,
                      [&](pugi::xml_node properties) { RunFormat::setBold(properties, bold); });
}

} // namespace wordbm::ooxml
