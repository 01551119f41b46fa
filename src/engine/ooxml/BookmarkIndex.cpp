#include "engine/ooxml/BookmarkIndex.h"

#include "engine/ooxml/NameKey.h"
#include "engine/ooxml/Story.h"

#include <algorithm>
#include <cstdlib>

namespace wordbm::ooxml {

namespace {

bool isMarker(ItemKind kind) {
    return kind == ItemKind::BookmarkStart || kind == ItemKind::BookmarkEnd;
}

} // namespace

BookmarkIndex::BookmarkIndex(const std::vector<Story*>& stories) {
    for (auto* story : stories) {
        const auto& map = story->map();
        for (const auto& item : map.items) {
            if (isMarker(item.kind)) {
                MarkerChange marker;
                marker.kind = item.kind;
                marker.id = item.node.attribute("w:id").value();
                count(*story, marker, 1);
            }
        }
        for (const auto& mark : map.bookmarks) {
            if (mark.name.empty()) {
                continue;
            }
            BookmarkEntry entry{mark.name,
                                nameKey(mark.name),
                                mark.id,
                                story,
                                map.items[static_cast<std::size_t>(mark.startItem)].node,
                                map.items[static_cast<std::size_t>(mark.endItem)].node};
            ++named_[entry.key];
            const auto [at, fresh] = byKey_.try_emplace(entry.key, std::move(entry));
            if (fresh) {
                byStart_[at->second.startMarker.internal_object()] = &at->second;
            }
        }
    }
}

void BookmarkIndex::count(const Story& story, const MarkerChange& marker, int step) {
    auto& markers = ids_[&story][marker.id];
    (marker.kind == ItemKind::BookmarkStart ? markers.starts : markers.ends) += step;
    auto& value = idValues_[std::atoll(marker.id.c_str())];
    value += step;
    if (value == 0) {
        idValues_.erase(std::atoll(marker.id.c_str()));
    }
}

// Each id the edit touched must have had, and must have, either no markers or one start and one
// end, and lost or gained markers only: then the bookmark under that id came or went whole, and no
// other one changed its pairing.
bool BookmarkIndex::follow(Story& story, const std::vector<MarkerChange>& changes) {
    const auto simple = [&](const std::string& id) {
        const auto& markers = ids_[&story][id];
        return (markers.starts == 0 && markers.ends == 0) || (markers.starts == 1 && markers.ends == 1);
    };
    std::unordered_map<std::string, bool> direction;
    for (const auto& change : changes) {
        const auto [at, fresh] = direction.emplace(change.id, change.added);
        if (!simple(change.id) || at->second != change.added) {
            return false;
        }
    }
    for (const auto& change : changes) {
        count(story, change, change.added ? 1 : -1);
    }
    for (const auto& change : changes) {
        if (!simple(change.id)) {
            return false;
        }
    }
    for (const auto& change : changes) {
        if (change.kind != ItemKind::BookmarkStart || change.name.empty()) {
            continue;
        }
        if (!(change.added ? add(story, change) : remove(change))) {
            return false;
        }
    }
    return true;
}

bool BookmarkIndex::add(Story& story, const MarkerChange& start) {
    if (!start.partner) {
        return true; // its end comes before it: no bookmark
    }
    auto key = nameKey(start.name);
    if (named_.count(key) > 0) {
        return false; // which one the name stands for depends on the story order
    }
    named_[key] = 1;
    BookmarkEntry entry{start.name, key, start.id, &story, pugi::xml_node(start.node), start.partner};
    const auto at = byKey_.emplace(std::move(key), std::move(entry)).first;
    byStart_[start.node] = &at->second;
    sortedStale_ = true;
    return true;
}

bool BookmarkIndex::remove(const MarkerChange& start) {
    const auto found = byStart_.find(start.node);
    const auto key = nameKey(start.name);
    const auto named = named_.find(key);
    if (found == byStart_.end() || found->second->id != start.id) {
        // No bookmark (its end came first) when no other one has the name; else the name may have
        // hidden it, and only a new index can tell.
        return named == named_.end();
    }
    if (named->second > 1) {
        return false; // a bookmark the name hid comes forward
    }
    named_.erase(named);
    byStart_.erase(found);
    byKey_.erase(key);
    sortedStale_ = true;
    return true;
}

const std::vector<const BookmarkEntry*>& BookmarkIndex::sorted() const {
    if (sortedStale_) {
        sorted_.clear();
        sorted_.reserve(byKey_.size());
        for (const auto& [key, entry] : byKey_) {
            sorted_.push_back(&entry);
        }
        sortedStale_ = false;
    }
    return sorted_;
}

const BookmarkEntry* BookmarkIndex::find(std::string_view name) const {
    const auto found = byKey_.find(nameKey(name));
    return found != byKey_.end() ? &found->second : nullptr;
}

const BookmarkEntry* BookmarkIndex::startingAt(pugi::xml_node marker) const {
    const auto found = byStart_.find(marker.internal_object());
    return found != byStart_.end() ? found->second : nullptr;
}

int BookmarkIndex::markers(const Story& story, const std::string& id) const {
    const auto inStory = ids_.find(&story);
    if (inStory == ids_.end()) {
        return 0;
    }
    const auto found = inStory->second.find(id);
    return found != inStory->second.end() ? found->second.starts + found->second.ends : 0;
}

std::string BookmarkIndex::nextId() const {
    const long long highest = idValues_.empty() ? 0 : std::max(0LL, idValues_.rbegin()->first);
    return std::to_string(highest + 1);
}

} // namespace wordbm::ooxml
