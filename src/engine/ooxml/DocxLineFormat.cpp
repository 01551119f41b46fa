#include "engine/ooxml/DocxLineFormat.h"

#include "engine/ooxml/DocxDocument.h"
#include "engine/ooxml/DocxShape.h"

namespace wordbm::ooxml {

bool DocxLineFormat::Visible() const {
    return shape_->checked().lineVisible();
}

void DocxLineFormat::Visible(bool visible) {
    auto shape = shape_->checked();
    shape.setLineVisible(visible);
    shape_->document().drawingsChanged(shape_->holder());
}

} // namespace wordbm::ooxml
