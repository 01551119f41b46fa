#pragma once

#include "engine/ooxml/BookmarkIndex.h"
#include "engine/word/Bookmarks.h"

#include <memory>

namespace wordbm::ooxml {

class DocxDocument;

// A bookmark by name; every call finds it again, so it follows edits and throws once it is deleted.
class DocxBookmark final : public word::Bookmark {
public:
    DocxBookmark(std::shared_ptr<DocxDocument> document, std::string name);

    std::string Name() const override;
    long Start() const override;
    long End() const override;
    int StoryType() const override;
    word::RangePtr Range() override;
    void Select() override;
    void Delete() override;

private:
    const BookmarkEntry& entry() const;
    BookmarkEntry located() const;

    std::shared_ptr<DocxDocument> document_;
    std::string name_;
};

} // namespace wordbm::ooxml
