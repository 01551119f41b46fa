#include "engine/ooxml/DocxShapes.h"

#include "engine/ooxml/DocxDocument.h"
#include "engine/ooxml/DocxRange.h"
#include "engine/ooxml/DocxShape.h"
#include "engine/ooxml/DrawingCanvas.h"
#include "engine/ooxml/NameKey.h"
#include "engine/ooxml/ShapeFinder.h"
#include "engine/word/AutomationError.h"

#include <string_view>

namespace wordbm::ooxml {

namespace {

// The paragraph a new drawing is anchored in: the one holding the range's start.
// The first paragraph after the outermost table around `paragraph`, or `paragraph` itself when it
// stands in no table (or no paragraph follows the table). LibreOffice, which prints the invoices,
// holds a canvas anchored in a table cell inside that cell, whatever its page position says.
pugi::xml_node outsideTables(pugi::xml_node paragraph) {
    pugi::xml_node table;
    for (pugi::xml_node up = paragraph.parent(); up; up = up.parent()) {
        if (std::string_view(up.name()) == "w:tbl") {
            table = up;
        }
    }
    for (pugi::xml_node next = table.next_sibling(); next; next = next.next_sibling()) {
        if (std::string_view(next.name()) == "w:p") {
            return next;
        }
    }
    return paragraph;
}

pugi::xml_node anchorParagraph(Story& story, long offset) {
    const auto& map = story.map();
    for (int i = map.startCut(offset).item; i < static_cast<int>(map.items.size()); ++i) {
        if (map.items[i].kind == ItemKind::ParagraphMark) {
            return outsideTables(map.items[i].node);
        }
    }
    throw AutomationError("An dieser Stelle kann kein Zeichenbereich verankert werden.");
}

} // namespace

DocxShapes::DocxShapes(std::shared_ptr<DocxDocument> document, Scope scope)
    : document_(std::move(document)), scope_(scope) {}

std::vector<std::pair<Story*, ShapeXml>> DocxShapes::list(DocxDocument& document, Scope scope) {
    document.check();
    std::vector<Story*> stories;
    if (scope == Scope::Main) {
        stories.push_back(&document.stories().main());
    } else {
        stories = document.stories().headersAndFooters();
    }
    std::vector<std::pair<Story*, ShapeXml>> shapes;
    for (auto* story : stories) {
        for (const auto& shape : ShapeFinder::shapes(story->root())) {
            if (!shape.isInline()) {
                shapes.emplace_back(story, shape);
            }
        }
    }
    return shapes;
}

int DocxShapes::Count() const {
    return static_cast<int>(list(*document_, scope_).size());
}

word::ShapePtr DocxShapes::Item(int index) {
    const auto shapes = list(*document_, scope_);
    if (index < 1 || index > static_cast<int>(shapes.size())) {
        throw AutomationError("Das angeforderte Element der Formen-Auflistung ist nicht vorhanden.");
    }
    const auto& [story, shape] = shapes[index - 1];
    return std::make_shared<DocxShape>(document_, story, shape);
}

word::ShapePtr DocxShapes::Item(const std::string& name) {
    const auto key = nameKey(name);
    for (const auto& [story, shape] : list(*document_, scope_)) {
        if (nameKey(shape.name()) == key) {
            return std::make_shared<DocxShape>(document_, story, shape);
        }
    }
    throw AutomationError("Die Form «" + name + "» ist nicht vorhanden.");
}

word::ShapePtr DocxShapes::AddCanvas(float left, float top, float width, float height,
                                     const word::RangePtr& anchor) {
    document_->check();
    Story* story = nullptr;
    long offset = 0;
    if (const auto* range = dynamic_cast<const DocxRange*>(anchor.get())) {
        story = range->story();
        offset = range->current().start;
    } else {
        const auto& selection = document_->selection();
        story = selection.story;
        offset = selection.start();
    }
    if (!story || story->kind() == StoryKind::TextBox) {
        throw AutomationError(
            "Ein Zeichenbereich kann nur im Text oder in einer Kopf- oder Fusszeile stehen.");
    }
    document_->ensureParagraph(*story);
    const unsigned id = document_->nextDrawingId();
    const auto canvas = DrawingCanvas::create(anchorParagraph(*story, offset), {left, top, width, height}, id,
                                              "Canvas " + std::to_string(id));
    document_->drawingsChanged(*story);
    return std::make_shared<DocxShape>(document_, story, canvas.shape());
}

} // namespace wordbm::ooxml
