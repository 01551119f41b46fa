#pragma once

#include "engine/ooxml/Span.h"
#include "engine/ooxml/SpanDeleter.h"
#include "engine/ooxml/Story.h"

#include <functional>
#include <string>
#include <string_view>
#include <utility>

namespace wordbm::ooxml {

// Every change of a story's text goes through here: runs are split only at the span's two ends,
// typed text takes the run properties of the character where the edit starts, and the story re-reads
// the window of segments the edit lay in. Throws AutomationError when the span's field is gone.
class StoryEditor {
public:
    using RemovalHook = SpanDeleter::RemovalHook;

    explicit StoryEditor(Story& story, RemovalHook removing = {})
        : story_(story), removing_(std::move(removing)) {}

    // Replaces the span's content by `text` and, when given, a copy of a prepared run (a picture).
    // Returns the offsets where the new content starts and ends.
    std::pair<long, long> replace(const Span& span, std::string_view text, pugi::xml_node run = {});
    void addBookmark(const Span& span, const std::string& name, const std::string& id);
    // Removes every marker with the id; when the caller knows the bookmark's two markers are the only
    // ones, it names them and only their stretch of the story is read.
    void removeBookmark(const std::string& id, pugi::xml_node start = {}, pugi::xml_node end = {});
    void setFieldCode(pugi::xml_node field, std::string_view code);
    // Applies `change` to the run properties of every run in the span; a collapsed span changes the
    // paragraph mark's, which text typed into an empty paragraph takes.
    void format(const Span& span, const std::function<void(pugi::xml_node)>& change);
    // A story always has a paragraph in Word; one whose XML has none (an empty body) gets one.
    // Returns true when it had to add it.
    bool ensureParagraph();

private:
    struct Split {
        const StoryWindow* window;
        int from;
        int to;
    };

    // The window holding the span, and its field when it is tied to one.
    const StoryWindow& windowOf(const Span& span);
    std::pair<Cut, Cut> cuts(const TextMap& map, const Span& span) const;
    // Splits texts at both cuts so that both fall between items; returns the item indices in the
    // window they refer to.
    Split splitAt(const Span& span, bool forInsertion);
    pugi::xml_node properties(const TextMap& map, const Cut& from, const Cut& to, const Span& span);
    pugi::xml_node keep(pugi::xml_node runProperties);

    Story& story_;
    RemovalHook removing_;
    pugi::xml_document kept_;
};

} // namespace wordbm::ooxml
