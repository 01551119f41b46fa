#include "engine/ooxml/DocxHeaderFooter.h"

#include "engine/AutomationError.h"
#include "engine/ooxml/DocxDocument.h"
#include "engine/ooxml/DocxRange.h"
#include "engine/ooxml/DocxShapes.h"

namespace wordbm::ooxml {

DocxHeaderFooter::DocxHeaderFooter(std::shared_ptr<DocxDocument> document, int section, bool header,
                                   int index)
    : document_(std::move(document)), section_(section), header_(header), index_(index) {}

Story* DocxHeaderFooter::story() const {
    document_->check();
    const auto& sections = document_->sections();
    if (section_ < 1 || section_ > static_cast<int>(sections.size())) {
        throw AutomationError("Der Abschnitt ist nicht mehr vorhanden.");
    }
    const auto& parts = sections[section_ - 1];
    const auto& part = (header_ ? parts.headers : parts.footers)[index_ - 1];
    return part.empty() ? nullptr : document_->stories().part(part);
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
