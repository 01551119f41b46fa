#pragma once

#include "engine/ooxml/Span.h"
#include "engine/word/Fields.h"

#include <cstdint>
#include <memory>
#include <pugixml.hpp>
#include <vector>

namespace wordbm::ooxml {

class DocxDocument;
class Story;

// The fields of a stretch of one story (for Document.Fields: the whole main story), in the order of
// their begins, nested fields after the field holding them. Looked up again whenever the story
// changed since the last call, so walking a long collection by index stays linear.
class DocxFields final : public word::Fields {
public:
    // `wholeStory`: the stretch grows and shrinks with the story.
    DocxFields(std::shared_ptr<DocxDocument> document, Story* story, long start, long end,
               bool wholeStory = false);
    // The fields nested, at any depth, in the code or the result of the field that begins at
    // `holder`: a code takes no offsets, so offsets cannot tell them apart.
    DocxFields(std::shared_ptr<DocxDocument> document, Story* story, pugi::xml_node holder, FieldPart part);

    int Count() const override;
    word::FieldPtr Item(int index) override;

private:
    const std::vector<pugi::xml_node>& begins() const;
    std::vector<pugi::xml_node> lookUp() const;
    std::vector<int> nestedInHolder() const;

    std::shared_ptr<DocxDocument> document_;
    Story* story_;
    long start_;
    long end_;
    bool wholeStory_;
    pugi::xml_node holder_;
    FieldPart part_ = FieldPart::None;
    mutable std::vector<pugi::xml_node> found_;
    mutable std::uint64_t foundGeneration_ = ~std::uint64_t{0};
};

} // namespace wordbm::ooxml
