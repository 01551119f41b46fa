#pragma once

#include "engine/word/Sections.h"

#include <memory>
#include <pugixml.hpp>

namespace wordbm::ooxml {

class DocxDocument;

// The page size and margins of one section, in its w:sectPr.
class DocxPageSetup final : public word::PageSetup {
public:
    DocxPageSetup(std::shared_ptr<DocxDocument> document, int index)
        : document_(std::move(document)), index_(index) {}
    float PageHeight() const override;
    float BottomMargin() const override;
    void BottomMargin(float points) override;

private:
    // Throws AutomationError when the section is gone; with `create`, an implicit section gets
    // the properties of its own.
    pugi::xml_node properties(bool create) const;

    std::shared_ptr<DocxDocument> document_;
    int index_;
};

} // namespace wordbm::ooxml
