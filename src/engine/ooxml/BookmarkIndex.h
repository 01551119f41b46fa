#pragma once

#include "engine/ooxml/MarkerChange.h"

#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace wordbm::ooxml {

class Story;

// One bookmark of the document: where it is and under which name. Its offsets follow its markers;
// `start` and `end` are filled in by DocxDocument::located when they are asked for.
struct BookmarkEntry {
    std::string name;
    std::string key; // the name folded for comparison
    std::string id;
    Story* story = nullptr;
    pugi::xml_node startMarker;
    pugi::xml_node endMarker;
    long start = 0;
    long end = 0;
    bool hidden() const { return !name.empty() && name.front() == '_'; }
};

// Every bookmark of every story. A name taken twice (a damaged form) counts once, the first in story
// order, as Word keeps only one bookmark per name. It follows edits marker by marker where a marker
// id and a name stand for one bookmark only, as in every form Word writes; anything else makes the
// document read it anew.
class BookmarkIndex {
public:
    explicit BookmarkIndex(const std::vector<Story*>& stories);

    // Follows the marker changes of one edit of `story`; false when only a new index can tell.
    bool follow(Story& story, const std::vector<MarkerChange>& changes);

    // Alphabetical, ignoring case.
    const std::vector<const BookmarkEntry*>& sorted() const;
    const BookmarkEntry* find(std::string_view name) const;
    // The bookmark that a start marker opens, if it is the one of its name.
    const BookmarkEntry* startingAt(pugi::xml_node marker) const;
    // How many markers of the story carry the id.
    int markers(const Story& story, const std::string& id) const;
    // Above every id in use, so a new bookmark cannot pair with another's marker.
    std::string nextId() const;

private:
    struct Markers {
        int starts = 0;
        int ends = 0;
    };

    void count(const Story& story, const MarkerChange& marker, int step);
    bool add(Story& story, const MarkerChange& start);
    bool remove(const MarkerChange& start);

    std::map<std::string, BookmarkEntry> byKey_; // the bookmark each name stands for
    std::unordered_map<std::string, int> named_; // bookmarks by key, those a name hides included
    std::unordered_map<pugi::xml_node_struct*, const BookmarkEntry*> byStart_;
    std::unordered_map<const Story*, std::unordered_map<std::string, Markers>> ids_;
    std::map<long long, int> idValues_; // every marker's id as a number
    mutable std::vector<const BookmarkEntry*> sorted_;
    mutable bool sortedStale_ = true;
};

} // namespace wordbm::ooxml
