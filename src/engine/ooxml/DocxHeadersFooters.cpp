#include "engine/ooxml/DocxHeadersFooters.h"

#include "engine/ooxml/DocxDocument.h"
#include "engine/ooxml/DocxHeaderFooter.h"
#include "engine/word/AutomationError.h"

namespace wordbm::ooxml {

word::HeaderFooterPtr DocxHeadersFooters::Item(int index) {
    document_->check();
    if (index < 1 || index > 3) {
        throw AutomationError(
            "Das angeforderte Element der Kopf-/Fusszeilen-Auflistung ist nicht vorhanden.");
    }
    return std::make_shared<DocxHeaderFooter>(document_, section_, headers_, index);
}

} // namespace wordbm::ooxml
