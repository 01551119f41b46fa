#pragma once

#include "engine/ooxml/Span.h"
#include "engine/word/Fields.h"

#include <memory>
#include <pugixml.hpp>
#include <vector>

namespace wordbm::ooxml {

class DocxDocument;
class Story;

// The fields of a stretch of one story (for Document.Fields: the whole main story), in the order of
// their begins, nested fields after the field holding them. Looked up on every call.
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
    std::vector<pugi::xml_node> begins() const;
    std::vector<int> nestedInHolder() const;

    std::shared_ptr<DocxDocument> document_;
    Story* story_;
    long start_;
    long end_;
    bool wholeStory_;
    pugi::xml_node holder_;
    FieldPart part_ = FieldPart::None;
};

} // namespace wordbm::ooxml
