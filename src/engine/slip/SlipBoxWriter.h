#pragma once

#include "engine/slip/SlipLayout.h"
#include "engine/word/Forward.h"

#include <string>
#include <utility>
#include <vector>

namespace wordbm {

class Trans;

// Writes the headings and value placeholders of one slip box into its text box, through the
// selection as a person would type them. Every placeholder stands in square brackets, and an engine
// bookmark named after "ESQR" + key (+ "TX" for a heading) covers the text between them, which is
// how the filling finds and unwraps it.
class SlipBoxWriter {
public:
    SlipBoxWriter(word::Application& word, word::Document& doc, const Trans& texts, std::string language)
        : word_(word), doc_(doc), texts_(texts), language_(std::move(language)) {}

    // May throw AutomationError.
    void Write(word::Shape& box, const SlipLayout::Box& layout, const SlipLayout::Sizes& sizes);

    // The heading of an entry in the build language, or the builder's German wording.
    std::string Heading(const SlipLayout::Entry& entry) const;

private:
    // A stretch of typed text and what it is.
    struct Piece {
        long start = 0;
        long end = 0;
        bool heading = false;
    };

    void entry(const SlipLayout::Entry& entry, std::vector<Piece>& pieces);
    // Types "[text]", covers text with a new bookmark for `field`; returns where "[" stands.
    long placeholder(const std::string& text, const std::string& field);
    // Arial in `size`; bold when asked, otherwise left as it is.
    void format(float size, bool bold);
    std::string bookmarkName(const std::string& field) const;

    word::Application& word_;
    word::Document& doc_;
    const Trans& texts_;
    std::string language_;
    word::SelectionPtr selection_;
};

} // namespace wordbm
