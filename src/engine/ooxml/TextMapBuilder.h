#pragma once

#include "engine/ooxml/TextMap.h"

namespace wordbm::ooxml {

// Reads a story (w:body, w:hdr, w:ftr, w:txbxContent, the notes and comments) into its offset table.
// The walk keeps its own stack, so nesting depth costs heap, not call stack. Drawings are single
// items: the text boxes inside them are stories of their own, and mc:Fallback copies are not read.
class TextMapBuilder {
public:
    static TextMap build(pugi::xml_node storyRoot);
    // The table of the story root's children from `first` up to `stop` (null: to the end), whose
    // text begins at story offset `base`. Fields must not reach out of them.
    static TextMap build(pugi::xml_node storyRoot, pugi::xml_node first, pugi::xml_node stop, long base);

private:
    explicit TextMapBuilder(TextMap& map) : map_(map) {}

    void walk(pugi::xml_node root, pugi::xml_node first, pugi::xml_node stop);
    // Returns true when the walk should go into the element's children.
    bool enter(pugi::xml_node element, bool deleted);
    void leave(pugi::xml_node element, bool deleted);
    void runChildren(pugi::xml_node run, bool deleted);
    void runChild(pugi::xml_node child, bool deleted);
    void add(pugi::xml_node node, ItemKind kind);

    void matchFields();
    void measure(long base);
    void matchBookmarks();

    TextMap& map_;
};

} // namespace wordbm::ooxml
