#pragma once

#include "engine/word/Sections.h"

#include <memory>
#include <string>

namespace wordbm::ooxml {

class DocxDocument;
class Story;

// One header or footer of a section: the part the section shows for this type, inherited from the
// sections before when the section does not define it.
class DocxHeaderFooter final : public word::HeaderFooter {
public:
    DocxHeaderFooter(std::shared_ptr<DocxDocument> document, int section, bool header, int index);
    int Index() const override { return index_; }
    bool Exists() const override;
    bool LinkToPrevious() const override;
    word::RangePtr Range() override;
    word::ShapesPtr Shapes() override;

private:
    // The part this header or footer shows in a section (1-based), "" when there is none.
    const std::string& partIn(int section) const;
    Story* story() const;

    std::shared_ptr<DocxDocument> document_;
    int section_;
    bool header_;
    int index_;
};

} // namespace wordbm::ooxml
