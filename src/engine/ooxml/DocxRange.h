#pragma once

#include "engine/ooxml/Span.h"
#include "engine/word/Range.h"

#include <memory>

namespace wordbm::ooxml {

class DocxDocument;
class Story;

// A stretch of one story by offsets. A range tied to a field (its code, result or the whole field)
// follows the field when other edits move it, and collapses where it began once the field is gone. A range of
// a header that does not exist has no story: it reads as empty and refuses edits.
class DocxRange final : public word::Range {
public:
    // A field-tied span takes the field's offsets at once.
    DocxRange(std::shared_ptr<DocxDocument> document, Story* story, Span span);

    long Start() const override;
    long End() const override;
    int StoryType() const override;
    std::string Text() const override;
    void Text(const std::string& text) override;
    void InsertAfter(const std::string& text) override;
    word::FieldsPtr Fields() override;
    word::BookmarksPtr Bookmarks() override;
    word::FontPtr Font() override;
    void Select() override;
    void SetRange(long start, long end) override;

    Story* story() const { return story_; }
    // The span as it stands now: field-tied spans are looked up again, offsets kept within the story.
    Span current() const;
    DocxDocument& document() const { return *document_; }

private:
    Story& editable() const;

    std::shared_ptr<DocxDocument> document_;
    Story* story_;
    mutable Span span_; // a field-tied span keeps the field's last known offsets
};

} // namespace wordbm::ooxml
