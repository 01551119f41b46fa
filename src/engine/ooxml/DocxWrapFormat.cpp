#include "engine/ooxml/DocxWrapFormat.h"

#include "engine/AutomationError.h"
#include "engine/ooxml/DocxDocument.h"
#include "engine/ooxml/DocxShape.h"
#include "engine/word/WordConstants.h"

namespace wordbm::ooxml {

int DocxWrapFormat::Type() const {
    return shape_->checked().wrapType();
}

void DocxWrapFormat::Type(int type) {
    if (type < word::wd::wdWrapSquare || type > word::wd::wdWrapTopBottom) {
        throw AutomationError("Diese Art des Textflusses wird nicht unterstützt.");
    }
    auto shape = shape_->checked();
    shape.setWrapType(type);
    shape_->document().drawingsChanged(shape_->holder());
}

float DocxWrapFormat::DistanceTop() const {
    return shape_->checked().wrapDistanceTop();
}

void DocxWrapFormat::DistanceTop(float points) {
    auto shape = shape_->checked();
    shape.setWrapDistanceTop(points);
    shape_->document().drawingsChanged(shape_->holder());
}

} // namespace wordbm::ooxml
