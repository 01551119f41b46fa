#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace wordbm::ooxml {

class Story;

// One bookmark of the document: where it is and under which name.
struct BookmarkEntry {
    std::string name;
    std::string key; // the name folded for comparison
    std::string id;
    Story* story = nullptr;
    long start = 0;
    long end = 0;
    bool hidden() const { return !name.empty() && name.front() == '_'; }
};

// Every bookmark of every story. A name taken twice (a damaged form) counts once, the first in story
// order, as Word keeps only one bookmark per name.
class BookmarkIndex {
public:
    explicit BookmarkIndex(const std::vector<Story*>& stories);

    // Alphabetical, ignoring case.
    const std::vector<BookmarkEntry>& sorted() const { return sorted_; }
    const BookmarkEntry* find(std::string_view name) const;
    // Above every id in use, so a new bookmark cannot pair with another's marker.
    std::string nextId() const { return std::to_string(maxId_ + 1); }

private:
    std::vector<BookmarkEntry> sorted_;
    long long maxId_ = 0;
};

} // namespace wordbm::ooxml
