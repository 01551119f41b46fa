#include "engine/ooxml/DocxField.h"

#include "engine/ooxml/DocxDocument.h"
#include "engine/ooxml/DocxRange.h"
#include "engine/word/AutomationError.h"

namespace wordbm::ooxml {

DocxField::DocxField(std::shared_ptr<DocxDocument> document, Story* story, pugi::xml_node begin)
    : document_(std::move(document)), story_(story), begin_(begin) {}

word::RangePtr DocxField::part(FieldPart which) {
    document_->check();
    if (!story_->alive() || !story_->fieldAlive(begin_)) {
        throw AutomationError("Das Feld ist nicht mehr vorhanden.");
    }
    return std::make_shared<DocxRange>(document_, story_, Span{0, 0, which, begin_});
}

word::RangePtr DocxField::Code() {
    return part(FieldPart::Code);
}

word::RangePtr DocxField::Result() {
    return part(FieldPart::Result);
}

void DocxField::Select() {
    part(FieldPart::Whole)->Select();
}

void DocxField::Delete() {
    part(FieldPart::Whole)->Text("");
}

} // namespace wordbm::ooxml
