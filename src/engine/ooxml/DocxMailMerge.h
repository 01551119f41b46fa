#pragma once

#include "engine/word/Sections.h"

#include <memory>

namespace wordbm::ooxml {

class DocxDocument;

class DocxMailMerge final : public word::MailMerge {
public:
    explicit DocxMailMerge(std::shared_ptr<DocxDocument> document) : document_(std::move(document)) {}
    int MainDocumentType() const override;
    void MainDocumentType(int type) override;

private:
    std::shared_ptr<DocxDocument> document_;
};

} // namespace wordbm::ooxml
