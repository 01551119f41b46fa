#include "engine/ooxml/DocxMailMerge.h"

#include "engine/ooxml/DocxDocument.h"
#include "engine/ooxml/MailMergeSettings.h"

namespace wordbm::ooxml {

int DocxMailMerge::MainDocumentType() const {
    document_->check();
    return MailMergeSettings::mainDocumentType(document_->package());
}

void DocxMailMerge::MainDocumentType(int type) {
    document_->check();
    if (MailMergeSettings::setMainDocumentType(document_->package(), type)) {
        document_->settingsChanged();
    }
}

} // namespace wordbm::ooxml
