#include "engine/ooxml/DocxBookmark.h"

#include "engine/ooxml/DocxDocument.h"
#include "engine/ooxml/DocxRange.h"
#include "engine/word/AutomationError.h"

namespace wordbm::ooxml {

DocxBookmark::DocxBookmark(std::shared_ptr<DocxDocument> document, std::string name)
    : document_(std::move(document)), name_(std::move(name)) {}

const BookmarkEntry& DocxBookmark::entry() const {
    document_->check();
    const auto* found = document_->bookmarkIndex().find(name_);
    if (!found) {
        throw AutomationError("Die Textmarke «" + name_ + "» ist nicht mehr vorhanden.");
    }
    return *found;
}

BookmarkEntry DocxBookmark::located() const {
    return document_->located(entry());
}

std::string DocxBookmark::Name() const {
    return entry().name;
}

long DocxBookmark::Start() const {
    return located().start;
}

long DocxBookmark::End() const {
    return located().end;
}

int DocxBookmark::StoryType() const {
    return entry().story->wordType();
}

word::RangePtr DocxBookmark::Range() {
    const auto found = located();
    return std::make_shared<DocxRange>(document_, found.story, Span{found.start, found.end});
}

void DocxBookmark::Select() {
    Range()->Select();
}

void DocxBookmark::Delete() {
    const auto found = entry();
    document_->deleteBookmark(found);
}

} // namespace wordbm::ooxml
