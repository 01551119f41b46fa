#pragma once

#include "engine/word/Forward.h"

#include <string>
#include <vector>

namespace wordbm {

// One story of a form with the label a person reads above it ("" for the main text).
struct FormStory {
    std::string label;
    word::RangePtr range;   // the whole story
    bool everyPage = false; // a header's or footer's, or a text box of theirs: printed on each page
};

// The stories of a form in reading order: the main text, the headers and footers of every section
// (one a section takes over from the section before stands under that section only), then the
// text boxes of the main text and of the headers and footers, those in drawing canvases included.
class FormStories {
public:
    // A story that cannot be read is left out.
    static std::vector<FormStory> list(word::Document& doc);
};

} // namespace wordbm
