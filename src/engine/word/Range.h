#pragma once

#include "engine/word/Forward.h"

#include <string>

namespace wordbm::word {

// A stretch of one story, (start, end) in characters of its visible text: a paragraph mark is
// "\r", a manual line break "\v" (11), a tab "\t"; every other run child counts as one character.
class Range {
public:
    virtual ~Range() = default;

    virtual long Start() const = 0;
    virtual long End() const = 0;
    // Word's wdStoryType: 1 main text, 5 text frame, 6 even header, 7 primary header,
    // 8 even footer, 9 primary footer, 10 first-page header, 11 first-page footer.
    virtual int StoryType() const = 0;

    virtual std::string Text() const = 0;
    // Replaces the range's text, keeping the formatting of its first character.
    virtual void Text(const std::string& text) = 0;
    virtual void InsertAfter(const std::string& text) = 0;

    virtual FieldsPtr Fields() = 0;       // fields within the range
    virtual BookmarksPtr Bookmarks() = 0; // bookmarks within the range, in document order
    virtual FontPtr Font() = 0;

    virtual void Select() = 0;
    // Makes the range (start, end) of its own story, kept within the story.
    virtual void SetRange(long start, long end) = 0;
};

} // namespace wordbm::word
