#pragma once

#include "engine/word/Forward.h"
#include "engine/word/WordConstants.h"

#include <string>

namespace wordbm::word {

// The cursor: an insertion point or an extended selection within one story.
class Selection {
public:
    virtual ~Selection() = default;

    virtual long Start() const = 0;
    virtual long End() const = 0;
    virtual std::string Text() const = 0;
    virtual RangePtr Range() = 0;
    virtual FontPtr Font() = 0;

    // wdStory: to the start of the story; with wdExtend the selection grows to there.
    virtual int HomeKey(int unit = wd::wdStory, int extend = wd::wdMove) = 0;
    // Types over the selection (or at the cursor); "\r" starts a paragraph, "\v" a line break.
    // Text typed at a bookmark's start goes inside it, at its end outside.
    virtual void TypeText(const std::string& text) = 0;
    // Returns the number of units moved. Without extend, a non-empty selection spends its
    // first unit collapsing to that side.
    virtual int MoveLeft(int unit = wd::wdCharacter, int count = 1, int extend = wd::wdMove) = 0;
    virtual int MoveRight(int unit = wd::wdCharacter, int count = 1, int extend = wd::wdMove) = 0;
    // Deletes the selection, or the character before the cursor.
    virtual void TypeBackspace() = 0;
    // Inserts the picture waiting in the application's image slot at the cursor.
    virtual void Paste() = 0;
    // Selects (start, end) in the selection's story.
    virtual void SetRange(long start, long end) = 0;
};

} // namespace wordbm::word
