#include "engine/ooxml/BookmarkIndex.h"

#include "engine/ooxml/NameKey.h"
#include "engine/ooxml/Story.h"

#include <algorithm>
#include <cstdlib>
#include <unordered_set>

namespace wordbm::ooxml {

BookmarkIndex::BookmarkIndex(const std::vector<Story*>& stories) {
    std::unordered_set<std::string> seen;
    for (auto* story : stories) {
        const auto& map = story->map();
        for (const auto& item : map.items) {
            if (item.kind == ItemKind::BookmarkStart || item.kind == ItemKind::BookmarkEnd) {
                maxId_ = std::max(maxId_, std::atoll(item.node.attribute("w:id").value()));
            }
        }
        for (const auto& mark : map.bookmarks) {
            BookmarkEntry entry{mark.name, nameKey(mark.name), mark.id, story, mark.start, mark.end};
            if (!mark.name.empty() && seen.insert(entry.key).second) {
                sorted_.push_back(std::move(entry));
            }
        }
    }
    std::stable_sort(sorted_.begin(), sorted_.end(), [](const BookmarkEntry& a, const BookmarkEntry& b) {
        return a.key != b.key ? a.key < b.key : a.name < b.name;
    });
}

const BookmarkEntry* BookmarkIndex::find(std::string_view name) const {
    const auto key = nameKey(name);
    const auto at =
        std::lower_bound(sorted_.begin(), sorted_.end(), key,
                         [](const BookmarkEntry& entry, const std::string& k) { return entry.key < k; });
    return at != sorted_.end() && at->key == key ? &*at : nullptr;
}

} // namespace wordbm::ooxml
