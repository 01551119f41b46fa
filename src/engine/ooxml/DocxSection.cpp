#include "engine/ooxml/DocxSection.h"

#include "engine/ooxml/DocxDocument.h"
#include "engine/ooxml/DocxHeadersFooters.h"
#include "engine/ooxml/DocxPageSetup.h"

namespace wordbm::ooxml {

word::HeadersFootersPtr DocxSection::Headers() {
    document_->check();
    return std::make_shared<DocxHeadersFooters>(document_, index_, true);
}

word::HeadersFootersPtr DocxSection::Footers() {
    document_->check();
    return std::make_shared<DocxHeadersFooters>(document_, index_, false);
}

word::PageSetupPtr DocxSection::PageSetup() {
    document_->check();
    return std::make_shared<DocxPageSetup>(document_, index_);
}

} // namespace wordbm::ooxml
