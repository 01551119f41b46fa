#include "engine/ooxml/DocxShape.h"

#include "engine/AutomationError.h"
#include "engine/ooxml/DocxCanvasShapes.h"
#include "engine/ooxml/DocxDocument.h"
#include "engine/ooxml/DocxLineFormat.h"
#include "engine/ooxml/DocxTextFrame.h"
#include "engine/ooxml/DrawingCanvas.h"
#include "engine/ooxml/ShapeFinder.h"
#include "engine/word/WordConstants.h"

namespace wordbm::ooxml {

namespace {

// Whether the element is still one of the story's shapes (top level or in one of its canvases).
bool stillThere(Story& story, const ShapeXml& shape) {
    if (!story.alive()) {
        return false;
    }
    for (const auto& top : ShapeFinder::shapes(story.root())) {
        if (top == shape) {
            return true;
        }
        if (top.type() == word::wd::msoCanvas) {
            for (const auto& item : DrawingCanvas(top).items()) {
                if (item == shape) {
                    return true;
                }
            }
        }
    }
    return false;
}

} // namespace

DocxShape::DocxShape(std::shared_ptr<DocxDocument> document, Story* holder, ShapeXml shape)
    : document_(std::move(document)), holder_(holder), shape_(shape) {}

const ShapeXml& DocxShape::checked() const {
    document_->check();
    if (!stillThere(*holder_, shape_)) {
        throw AutomationError("Die Form ist nicht mehr vorhanden.");
    }
    return shape_;
}

std::string DocxShape::Name() const {
    return checked().name();
}

void DocxShape::Name(const std::string& name) {
    shape_ = checked();
    shape_.setName(name);
    document_->drawingsChanged(*holder_);
}

int DocxShape::Type() const {
    return checked().type();
}

float DocxShape::Left() const {
    return checked().geometry().left;
}

float DocxShape::Top() const {
    return checked().geometry().top;
}

float DocxShape::Width() const {
    return checked().geometry().width;
}

float DocxShape::Height() const {
    return checked().geometry().height;
}

void DocxShape::Delete() {
    auto shape = checked();
    document_->retireInside(shape.node());
    shape.remove();
    document_->drawingsChanged(*holder_);
}

word::TextFramePtr DocxShape::TextFrame() {
    checked();
    return std::make_shared<DocxTextFrame>(shared_from_this());
}

word::CanvasShapesPtr DocxShape::CanvasItems() {
    if (checked().type() != word::wd::msoCanvas) {
        throw AutomationError("Die Form «" + shape_.name() + "» ist kein Zeichenbereich.");
    }
    return std::make_shared<DocxCanvasShapes>(shared_from_this());
}

word::LineFormatPtr DocxShape::Line() {
    checked();
    return std::make_shared<DocxLineFormat>(shared_from_this());
}

} // namespace wordbm::ooxml
