#include "engine/ooxml/DocxSections.h"

#include "engine/ooxml/DocxDocument.h"
#include "engine/ooxml/DocxSection.h"
#include "engine/word/AutomationError.h"

namespace wordbm::ooxml {

int DocxSections::Count() const {
    return static_cast<int>(document_->sections().size());
}

word::SectionPtr DocxSections::Item(int index) {
    if (index < 1 || index > Count()) {
        throw AutomationError("Das angeforderte Element der Abschnitt-Auflistung ist nicht vorhanden.");
    }
    return std::make_shared<DocxSection>(document_, index);
}

} // namespace wordbm::ooxml
