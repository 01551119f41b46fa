#include "engine/ooxml/DocxField.h"

#include "engine/ooxml/DocxDocument.h"
#include "engine/ooxml/DocxRange.h"

namespace wordbm::ooxml {

DocxField::DocxField(std::shared_ptr<DocxDocument> document, Story* story, pugi::xml_node begin)
    : document_(std::move(document)), story_(story), begin_(begin) {}

word::RangePtr DocxField::part(FieldPart which) {
    auto range = std::make_shared<DocxRange>(document_, story_, Span{0, 0, which, begin_});
    range->current(); // throws now when the field is gone
    return range;
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
