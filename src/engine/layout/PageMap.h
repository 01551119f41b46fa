#pragma once

#include "engine/layout/PrintedPages.h"

#include <optional>
#include <string>
#include <vector>

namespace wordbm {

struct PageMapLetters; // a story's text as matching compares it

// A place in a form: a story (its index in the list the map was made from) and an offset in it.
struct StoryPoint {
    int story = -1;
    long offset = 0;
    bool operator==(const StoryPoint&) const = default;
};

// A box on one page (0-based).
struct PlacedBox {
    int page = 0;
    PageBox box;
};

// Where the characters of a form's stories print: the printed words of the form's PDF matched to
// the words of its stories, longest runs of equal words first, so that a word is found in its own
// story even where the same word prints elsewhere too. Letter case and white space do not count;
// what prints without standing in a story (list numbers, page numbers, field codes' results of
// another kind) stays unmatched. The form itself is never changed for it.
class PageMap {
public:
    struct Story {
        std::u16string text;
        // Headers and footers print on every page; other stories print once.
        bool repeats = false;
    };

    PageMap(const std::vector<Story>& stories, const std::vector<PrintedPage>& pages);

    // The insertion point for a click at (x, y) on `page`: before the character under it, or
    // after it when the click is on its right half; the nearest character of the line (or the
    // page) when no character is under it. nullopt when nothing of a story prints on the page.
    std::optional<StoryPoint> at(int page, double x, double y) const;
    // Where the characters [start, end) of a story print, one box per line; a collapsed range
    // gets a narrow box at its place.
    std::vector<PlacedBox> boxes(int story, long start, long end) const;
    // How many characters of the pages were matched to a story.
    std::size_t placedCount() const;

private:
    struct Placed {
        StoryPoint point;
        PageBox box;
    };

    void matchPage(int page, const std::vector<Story>& stories, const PrintedPage& printed,
                   const std::vector<PageMapLetters>& letters);

    // Per page, the characters matched, in print order.
    std::vector<std::vector<Placed>> pages_;
    std::vector<std::vector<bool>> claimed_; // per story and letter: placed on an earlier page
};

} // namespace wordbm
