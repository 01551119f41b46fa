#pragma once

#include "engine/ooxml/StorySegments.h"
#include "engine/ooxml/StoryWindow.h"
#include "engine/ooxml/TextMap.h"

#include <cstdint>
#include <memory>
#include <string>
#include <unordered_set>
#include <vector>

namespace wordbm::ooxml {

enum class StoryKind { Main, Header, Footer, TextBox, Footnotes, Endnotes, Comments };

// One story: the main text, a header or footer part, a text box, the notes or the comments. It owns
// its offset table and rebuilds it lazily after an edit; positions never point into XML nodes.
// Edits and look-ups near one place use a window over the segments there instead of the whole
// table, so that a form with many bookmarks or fields is filled in time linear in their number.
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

    // The table of the whole story, built anew after an edit.
    const TextMap& map();
    long length() { return segments().length(); }
    bool hasParagraph() { return segments().hasParagraph(); }

    // The table of the segments holding [start, end]: every item at those offsets, and the whole
    // paragraphs around them. Valid until the next edit or window.
    const StoryWindow& window(long start, long end);
    // The window of the segment holding a live node of the story (a field's begin, a marker).
    const StoryWindow& windowHolding(pugi::xml_node node);
    // The window from the segment of `first` through that of `last`.
    const StoryWindow& windowBetween(pugi::xml_node first, pugi::xml_node last);
    // Whether `begin` is the begin of a field the story still has (it may point at freed memory).
    bool fieldAlive(pugi::xml_node begin);
    // The offset of a bookmark marker of the story.
    long offsetOf(pugi::xml_node marker);

    // Called after a change of the story's XML within `window` (the one handed out last): only its
    // segments are read again.
    void edited(const StoryWindow& window);
    // Called after any other change of the story's XML: every table is rebuilt on next use.
    void changed();
    std::uint64_t generation() const { return generation_; }
    // The marker changes of the edits since the last call, edit by edit; false when a change could
    // not be followed (the story was read anew), so whoever indexes markers must read it anew too.
    bool takeMarkerChanges(std::vector<std::vector<MarkerChange>>& changes);

    // A text box whose drawing was deleted: every later use throws.
    bool alive() const { return alive_; }
    void retire() { alive_ = false; }

    // Set by an edit, cleared when the package was written (text boxes copy themselves to the fallback).
    bool editedSinceSave() const { return edited_; }
    void saved() { edited_ = false; }

private:
    const StorySegments& segments();
    const StoryWindow& windowOver(int from, int to);
    std::unique_ptr<StoryWindow> read(int from, int to, pugi::xml_node before, pugi::xml_node stop);
    void noteMarkers(const StoryWindow& was, const StoryWindow& now);

    StoryKind kind_;
    std::string name_;
    std::string partName_;
    pugi::xml_node root_;
    int wordType_;
    std::uint64_t generation_ = 0;
    std::uint64_t mapGeneration_ = ~std::uint64_t{0};
    std::unique_ptr<TextMap> map_;
    StorySegments segments_;
    bool segmentsRead_ = false;
    std::unique_ptr<StoryWindow> window_;
    std::unordered_set<pugi::xml_node_struct*> fieldBegins_;
    std::vector<std::vector<MarkerChange>> markerChanges_;
    bool markersFollowed_ = true;
    bool alive_ = true;
    bool edited_ = false;
};

} // namespace wordbm::ooxml
