#include "engine/ooxml/DocxHeaderFooter.h"

#include "engine/ooxml/DocxDocument.h"
#include "engine/ooxml/DocxRange.h"
#include "engine/ooxml/DocxShapes.h"
#include "engine/word/AutomationError.h"

namespace wordbm::ooxml {

DocxHeaderFooter::DocxHeaderFooter(std::shared_ptr<DocxDocument> document, int section, bool header,
                                   int index)
    : document_(std::move(document)), section_(section), header_(header), index_(index) {}

const std::string& DocxHeaderFooter::partIn(int section) const {
    document_->check();
    const auto& sections = document_->sections();
    if (section < 1 || section > static_cast<int>(sections.size())) {
        throw AutomationError("Der Abschnitt ist nicht mehr vorhanden.");
    }
    const auto& parts = sections[section - 1];
    return (header_ ? parts.headers : parts.footers)[index_ - 1];
}

Story* DocxHeaderFooter::story() const {
    const auto& part = partIn(section_);
    return part.empty() ? nullptr : document_->stories().part(part);
}

bool DocxHeaderFooter::LinkToPrevious() const {
    // A section that does not define this type shows the part of the section before.
    return section_ > 1 && partIn(section_) == partIn(section_ - 1);
}

bool DocxHeaderFooter::Exists() const {
    return story() != nullptr;
}

word::RangePtr DocxHeaderFooter::Range() {
    auto* found = story();
    return std::make_shared<DocxRange>(document_, found, Span{0, found ? found->length() : 0});
}

word::ShapesPtr DocxHeaderFooter::Shapes() {
    document_->check();
    return std::make_shared<DocxShapes>(document_, DocxShapes::Scope::HeadersFooters);
}

} // namespace wordbm::ooxml
