#include "engine/ooxml/DocxTextFrame.h"

#include "engine/ooxml/DocxDocument.h"
#include "engine/ooxml/DocxRange.h"
#include "engine/ooxml/DocxShape.h"
#include "engine/word/AutomationError.h"

namespace wordbm::ooxml {

bool DocxTextFrame::HasText() const {
    return shape_->checked().hasText();
}

word::RangePtr DocxTextFrame::TextRange() {
    auto& document = shape_->document();
    auto* story = document.stories().textBox(shape_->checked().textContent());
    if (!story) {
        throw AutomationError("Diese Form enthält keinen Text.");
    }
    return std::make_shared<DocxRange>(document.shared_from_this(), story, Span{0, story->length()});
}

} // namespace wordbm::ooxml
