#pragma once

#include <string>
#include <vector>

namespace wordbm::ooxml {

class DocxDocument;

// What one story holds, for people who support forms (the inspect verb): every bookmark, hidden
// ones included, and every field, in document order.
struct StoryReport {
    struct Bookmark {
        std::string name;
        bool hidden = false;
        std::string text;
        std::string after; // what follows it up to the paragraph's end, at most 40 characters
    };
    struct Field {
        std::string code;
        std::string result;
        bool nested = false; // inside another field
    };
    std::string story; // "main", "header1", "footer2", "footnotes", "textbox:NAME"
    int storyType = 1; // Word's wdStoryType
    std::vector<Bookmark> bookmarks;
    std::vector<Field> fields;
};

// A top-level shape of the main text or of a header or footer.
struct ShapeReport {
    std::string name;
    int type = 0;      // MsoShapeType
    std::string story; // the story it stands in
    bool inlineShape = false;
};

class StoryListing {
public:
    // Every story of the document; text boxes after the parts.
    static std::vector<StoryReport> stories(DocxDocument& document);
    // Floating and inline shapes of the main story and of the headers and footers.
    static std::vector<ShapeReport> shapes(DocxDocument& document);
};

} // namespace wordbm::ooxml
