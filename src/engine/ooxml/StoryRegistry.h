#pragma once

#include "engine/ooxml/Story.h"

#include <memory>
#include <string>
#include <vector>

namespace wordbm::ooxml {

class Package;

// The stories of one document: the main text, every header and footer part, the notes and comments,
// and every text box found in them. Story objects keep their addresses for the document's life, so
// ranges may point at them; a text box whose drawing goes is retired, not freed.
class StoryRegistry {
public:
    explicit StoryRegistry(Package& package);

    Story& main() { return *parts_.front(); }
    // main, headers and footers, notes, comments, then the text boxes in the order of their stories.
    std::vector<Story*> all();
    std::vector<Story*> headersAndFooters();
    // The story of a header or footer part; null when the document has no such part.
    Story* part(const std::string& partName);
    // The story of a text box's content (the Choice's, when stored twice); null when unknown.
    Story* textBox(pugi::xml_node content);
    // The part story that holds a node (for text boxes: the story their drawing stands in).
    Story* partHolding(pugi::xml_node node);

    // Drawings were added or removed: look for text boxes again on next use.
    void drawingsChanged() { textBoxesKnown_ = false; }
    // Retires the text boxes inside a subtree that is about to be removed.
    void retireInside(pugi::xml_node subtree);

private:
    void addPart(StoryKind kind, const std::string& partName, const char* rootChild);
    void findTextBoxes();

    Package& package_;
    std::vector<std::unique_ptr<Story>> parts_;
    std::vector<std::unique_ptr<Story>> textBoxes_;
    bool textBoxesKnown_ = false;
};

} // namespace wordbm::ooxml
