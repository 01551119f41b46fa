#include "engine/ooxml/DocxDocuments.h"

#include "engine/ooxml/DocxApplication.h"
#include "engine/ooxml/DocxDocument.h"
#include "engine/word/AutomationError.h"

namespace wordbm::ooxml {

word::DocumentPtr DocxDocuments::Open(const std::string& fileName) {
    return application_->open(fileName);
}

int DocxDocuments::Count() const {
    return static_cast<int>(application_->open().size());
}

word::DocumentPtr DocxDocuments::Item(int index) {
    const auto documents = application_->open();
    if (index < 1 || index > static_cast<int>(documents.size())) {
        throw AutomationError("Das angeforderte Element der Dokument-Auflistung ist nicht vorhanden.");
    }
    return documents[index - 1];
}

} // namespace wordbm::ooxml
