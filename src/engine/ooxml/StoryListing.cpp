#include "engine/ooxml/StoryListing.h"

#include "engine/ooxml/DocxDocument.h"
#include "engine/ooxml/ShapeFinder.h"

#include <algorithm>

namespace wordbm::ooxml {

std::vector<StoryReport> StoryListing::stories(DocxDocument& document) {
    std::vector<StoryReport> reports;
    for (auto* story : document.stories().all()) {
        const auto& map = story->map();
        StoryReport report;
        report.story = story->name();
        report.storyType = story->wordType();
        for (const auto& mark : map.bookmarks) {
            // Where a bookmark stands shows in the words after it.
            std::string after = map.text(mark.end, std::min(mark.end + 40, map.length()));
            after = after.substr(0, after.find_first_of("\r\a"));
            report.bookmarks.push_back({mark.name, !mark.name.empty() && mark.name.front() == '_',
                                        map.text(mark.start, mark.end), after});
        }
        for (int f = 0; f < static_cast<int>(map.fields.size()); ++f) {
            report.fields.push_back({map.fields[f].code, map.text(map.resultStart(f), map.fieldEnd(f)),
                                     map.fields[f].parent >= 0});
        }
        reports.push_back(std::move(report));
    }
    return reports;
}

std::vector<ShapeReport> StoryListing::shapes(DocxDocument& document) {
    std::vector<ShapeReport> reports;
    auto stories = document.stories().headersAndFooters();
    stories.insert(stories.begin(), &document.stories().main());
    for (auto* story : stories) {
        for (const auto& shape : ShapeFinder::shapes(story->root())) {
            reports.push_back({shape.name(), shape.type(), story->name(), shape.isInline()});
        }
    }
    return reports;
}

} // namespace wordbm::ooxml
