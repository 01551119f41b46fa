#pragma once

#include "engine/FormStories.h"
#include "engine/layout/PageMap.h"
#include "engine/layout/PrintedPages.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace wordbm {

class KnownFields;

// The working form as it prints, read from its PDF, with every bookmark and merge field placed on
// the pages where it prints, and the way back from a place on a page to the word processor's
// selection. The form is exported as it stands and never changed for it.
class FormLayout {
public:
    enum class MarkKind {
        Bookmark,   // an engine bookmark: it stands for a known field
        MergeField, // a MERGEFIELD, as older forms hold them
        Unknown,    // a bookmark that stands for no known field
    };
    struct Mark {
        MarkKind kind = MarkKind::Bookmark;
        std::string label;    // the field's name, or an unknown bookmark's own name
        std::string bookmark; // the bookmark's name; "" for a merge field
        StoryPoint start;
        long end = 0;
        std::vector<PlacedBox> boxes; // empty when its text does not print
    };

    // Exports `doc` to `pdfPath` through the office worker, reads the PDF back and places the
    // stories' words, bookmarks and merge fields on it. Throws the export's AutomationError.
    static std::shared_ptr<FormLayout> make(word::Document& doc, const KnownFields& fields,
                                            const std::string& pdfPath);

    const std::vector<PrintedPage>& pages() const { return pages_; }
    const std::vector<Mark>& marks() const { return marks_; }
    const PageMap& map() const { return map_; }
    // The label a person reads for a story ("" the main text).
    const std::string& storyLabel(int story) const;

    // The insertion point for a click on a page: nullopt when nothing of a story prints there.
    std::optional<StoryPoint> pointAt(int page, double x, double y) const { return map_.at(page, x, y); }
    // Makes `point` the document's selection (collapsed); false when the document refuses it.
    bool select(const StoryPoint& point);
    // Selects what a mark covers: the bookmark, or the merge field's whole range.
    bool select(const Mark& mark);
    // The engine bookmark or merge field whose frame holds (x, y) on `page`, the smallest where
    // frames nest; null when there is none. Unknown bookmarks (often whole paragraphs) are left
    // out, so that a click inside them places the cursor.
    const Mark* fieldAt(int page, double x, double y) const;

private:
    FormLayout(std::vector<FormStory> stories, std::vector<PrintedPage> pages, PageMap map);
    void addMarks(const KnownFields& fields);
    void addMark(MarkKind kind, std::string label, std::string bookmark, int story, long start, long end);

    std::vector<FormStory> stories_;
    std::vector<PrintedPage> pages_;
    PageMap map_;
    std::vector<Mark> marks_;
};

} // namespace wordbm
