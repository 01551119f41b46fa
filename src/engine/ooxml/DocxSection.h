#pragma once

#include "engine/word/Sections.h"

#include <memory>

namespace wordbm::ooxml {

class DocxDocument;

class DocxSection final : public word::Section {
public:
    DocxSection(std::shared_ptr<DocxDocument> document, int index)
        : document_(std::move(document)), index_(index) {}
    int Index() const override { return index_; }
    word::HeadersFootersPtr Headers() override;
    word::HeadersFootersPtr Footers() override;
    word::PageSetupPtr PageSetup() override;

private:
    std::shared_ptr<DocxDocument> document_;
    int index_;
};

} // namespace wordbm::ooxml
