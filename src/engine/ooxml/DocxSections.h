#pragma once

#include "engine/word/Sections.h"

#include <memory>

namespace wordbm::ooxml {

class DocxDocument;

class DocxSections final : public word::Sections {
public:
    explicit DocxSections(std::shared_ptr<DocxDocument> document) : document_(std::move(document)) {}
    int Count() const override;
    word::SectionPtr Item(int index) override;

private:
    std::shared_ptr<DocxDocument> document_;
};

} // namespace wordbm::ooxml
