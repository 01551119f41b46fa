#pragma once

#include "engine/word/Forward.h"

#include <string>

namespace wordbm::word {

class Bookmarks {
public:
    virtual ~Bookmarks() = default;

    // A document's bookmarks span every story and come in alphabetical order; a range's come in
    // document order. Hidden bookmarks (names starting with "_") count only with ShowHidden.
    virtual int Count() const = 0;
    virtual BookmarkPtr Item(int index) = 0;               // 1-based; throws when out of range
    virtual BookmarkPtr Item(const std::string& name) = 0; // ignoring case; throws when absent
    virtual bool Exists(const std::string& name) const = 0;
    // Adds (or moves) the bookmark to the range; throws for an invalid name.
    virtual BookmarkPtr Add(const std::string& name, const RangePtr& range) = 0;

    // Kept as Word keeps it: only a bookmark dialog would sort by it.
    virtual int DefaultSorting() const = 0;
    virtual void DefaultSorting(int sorting) = 0;
    virtual bool ShowHidden() const = 0;
    virtual void ShowHidden(bool show) = 0;
};

class Bookmark {
public:
    virtual ~Bookmark() = default;
    virtual std::string Name() const = 0;
    virtual long Start() const = 0;
    virtual long End() const = 0;
    virtual int StoryType() const = 0;
    virtual RangePtr Range() = 0;
    virtual void Select() = 0;
    virtual void Delete() = 0; // removes the marker, not the text
};

} // namespace wordbm::word
