#pragma once

#include "engine/ooxml/TextMap.h"

#include <cstdint>
#include <memory>
#include <string>

namespace wordbm::ooxml {

enum class StoryKind { Main, Header, Footer, TextBox, Footnotes, Endnotes, Comments };

// One story: the main text, a header or footer part, a text box, the notes or the comments. It owns
// its offset table and rebuilds it lazily after an edit; positions never point into XML nodes.
//
// Offsets count UTF-16 code units, as Word's do, so that a count taken from Word (or from
// word::TextLength) moves over the same text. They count what Word shows with field codes hidden:
// a field takes the offsets of its result only, and its code is reached through the field (a range
// tied to it), never by offsets. A field without a result therefore sits at one offset.
class Story {
public:
    Story(StoryKind kind, std::string name, std::string partName, pugi::xml_node root);

    StoryKind kind() const { return kind_; }
    // "main", "header1", "footer2", "textbox:NAME", "footnotes", ...
    const std::string& name() const { return name_; }
    const std::string& partName() const { return partName_; }
    pugi::xml_node root() const { return root_; }

    // Word's wdStoryType (1 main, 5 text frame, 6-11 headers and footers, 2/3/4 notes and comments).
    int wordType() const { return wordType_; }
    void setWordType(int type) { wordType_ = type; }

    const TextMap& map();
    long length() { return map().length(); }
    // Called after every change of the story's XML: the table is rebuilt on next use.
    void changed();
    std::uint64_t generation() const { return generation_; }

    // A text box whose drawing was deleted: every later use throws.
    bool alive() const { return alive_; }
    void retire() { alive_ = false; }

    // Set by an edit, cleared when the package was written (text boxes copy themselves to the fallback).
    bool editedSinceSave() const { return edited_; }
    void saved() { edited_ = false; }

private:
    StoryKind kind_;
    std::string name_;
    std::string partName_;
    pugi::xml_node root_;
    int wordType_;
    std::uint64_t generation_ = 0;
    std::uint64_t mapGeneration_ = ~std::uint64_t{0};
    std::unique_ptr<TextMap> map_;
    bool alive_ = true;
    bool edited_ = false;
};

} // namespace wordbm::ooxml
