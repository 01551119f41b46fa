#pragma once

#include "engine/word/Sections.h"

#include <memory>

namespace wordbm::ooxml {

class DocxDocument;

// The three headers (or footers) of a section, as Word always has them.
class DocxHeadersFooters final : public word::HeadersFooters {
public:
    DocxHeadersFooters(std::shared_ptr<DocxDocument> document, int section, bool headers)
        : document_(std::move(document)), section_(section), headers_(headers) {}
    int Count() const override { return 3; }
    word::HeaderFooterPtr Item(int index) override;

private:
    std::shared_ptr<DocxDocument> document_;
    int section_;
    bool headers_;
};

} // namespace wordbm::ooxml
