#pragma once

#include "engine/word/Documents.h"

#include <memory>

namespace wordbm::ooxml {

class DocxApplication;

class DocxDocuments final : public word::Documents {
public:
    explicit DocxDocuments(std::shared_ptr<DocxApplication> application)
        : application_(std::move(application)) {}
    word::DocumentPtr Open(const std::string& fileName) override;
    int Count() const override;
    word::DocumentPtr Item(int index) override;

private:
    std::shared_ptr<DocxApplication> application_;
};

} // namespace wordbm::ooxml
