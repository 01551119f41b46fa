#pragma once

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

    int Count() const override;
    word::FieldPtr Item(int index) override;

private:
    std::vector<pugi::xml_node> begins() const;

    std::shared_ptr<DocxDocument> document_;
    Story* story_;
    long start_;
    long end_;
    bool wholeStory_;
};

} // namespace wordbm::ooxml
