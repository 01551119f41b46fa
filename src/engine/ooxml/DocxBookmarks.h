#pragma once

#include "engine/ooxml/BookmarkIndex.h"
#include "engine/word/Bookmarks.h"

#include <memory>
#include <optional>
#include <vector>

namespace wordbm::ooxml {

class DocxDocument;
class Story;

// The bookmarks of a document (every story, alphabetical) or of a range (in document order). The
// collection is live: each call looks at the document as it is then.
class DocxBookmarks final : public word::Bookmarks {
public:
    explicit DocxBookmarks(std::shared_ptr<DocxDocument> document);
    DocxBookmarks(std::shared_ptr<DocxDocument> document, Story* story, long start, long end);

    int Count() const override;
    word::BookmarkPtr Item(int index) override;
    word::BookmarkPtr Item(const std::string& name) override;
    bool Exists(const std::string& name) const override;
    word::BookmarkPtr Add(const std::string& name, const word::RangePtr& range) override;
    int DefaultSorting() const override;
    void DefaultSorting(int sorting) override;
    bool ShowHidden() const override;
    void ShowHidden(bool show) override;

    // Word's rule: a letter first, then letters, digits and "_", at most 40 characters. A leading "_"
    // (hidden bookmarks) is accepted too, as Word accepts it from a program.
    static bool validName(const std::string& name);

private:
    std::vector<BookmarkEntry> visible() const;

    std::shared_ptr<DocxDocument> document_;
    struct Scope {
        Story* story;
        long start;
        long end;
    };
    std::optional<Scope> scope_;
};

} // namespace wordbm::ooxml
