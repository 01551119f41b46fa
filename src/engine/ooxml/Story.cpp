#include "engine/ooxml/Story.h"

#include "engine/ooxml/TextMapBuilder.h"

#include <algorithm>
#include <set>
#include <tuple>
#include <unordered_map>

namespace wordbm::ooxml {

namespace {

using MarkerKey = std::tuple<pugi::xml_node_struct*, ItemKind, std::string>;

MarkerKey keyOf(const MarkerChange& marker) {
    return {marker.node, marker.kind, marker.id};
}

int defaultWordType(StoryKind kind) {
    switch (kind) {
    case StoryKind::Main:
        return 1;
    case StoryKind::Footnotes:
        return 2;
    case StoryKind::Endnotes:
        return 3;
    case StoryKind::Comments:
        return 4;
    case StoryKind::TextBox:
        return 5;
    case StoryKind::Header:
        return 7;
    case StoryKind::Footer:
        return 9;
    }
    return 1;
}

} // namespace

Story::Story(StoryKind kind, std::string name, std::string partName, pugi::xml_node root)
    : kind_(kind), name_(std::move(name)), partName_(std::move(partName)), root_(root),
      wordType_(defaultWordType(kind)) {}

const TextMap& Story::map() {
    if (!map_ || mapGeneration_ != generation_) {
        map_ = std::make_unique<TextMap>(TextMapBuilder::build(root_));
        mapGeneration_ = generation_;
    }
    return *map_;
}

const StorySegments& Story::segments() {
    if (!segmentsRead_) {
        const auto& whole = map();
        segments_.build(root_, whole);
        fieldBegins_.clear();
        for (const auto& field : whole.fields) {
            fieldBegins_.insert(whole.items[static_cast<std::size_t>(field.begin)].node.internal_object());
        }
        window_.reset();
        segmentsRead_ = true;
    }
    return segments_;
}

const StoryWindow& Story::window(long start, long end) {
    const auto& segments = this->segments();
    return windowOver(segments.holding(std::min(start, end)), segments.holding(std::max(start, end)));
}

const StoryWindow& Story::windowHolding(pugi::xml_node node) {
    const int segment = segments().holding(node);
    return windowOver(segment, segment);
}

const StoryWindow& Story::windowBetween(pugi::xml_node first, pugi::xml_node last) {
    const auto& segments = this->segments();
    const int a = segments.holding(first);
    const int b = segments.holding(last);
    return windowOver(std::min(a, b), std::max(a, b));
}

bool Story::fieldAlive(pugi::xml_node begin) {
    segments();
    return begin && fieldBegins_.count(begin.internal_object()) > 0;
}

long Story::offsetOf(pugi::xml_node marker) {
    const auto& map = windowHolding(marker).map;
    const auto found = std::find_if(map.items.begin(), map.items.end(),
                                    [&](const StoryItem& item) { return item.node == marker; });
    return found != map.items.end() ? found->offset : map.first();
}

const StoryWindow& Story::windowOver(int from, int to) {
    if (window_ && window_->from == from && window_->to == to && window_->version == segments_.version()) {
        return *window_;
    }
    const auto first = segments_.first(from);
    window_ = read(from, to, first ? first.previous_sibling() : pugi::xml_node(), segments_.stop(to));
    return *window_;
}

std::unique_ptr<StoryWindow> Story::read(int from, int to, pugi::xml_node before, pugi::xml_node stop) {
    auto window = std::make_unique<StoryWindow>();
    const auto first = before ? before.next_sibling() : root_.first_child();
    window->map = TextMapBuilder::build(root_, first, stop, segments_.startOf(from));
    window->from = from;
    window->to = to;
    window->before = before;
    window->stop = stop;
    window->version = segments_.version();
    const auto& map = window->map;
    std::unordered_map<pugi::xml_node_struct*, pugi::xml_node> endOf;
    for (const auto& bookmark : map.bookmarks) {
        endOf[map.items[static_cast<std::size_t>(bookmark.startItem)].node.internal_object()] =
            map.items[static_cast<std::size_t>(bookmark.endItem)].node;
    }
    for (const auto& item : map.items) {
        if (item.kind != ItemKind::BookmarkStart && item.kind != ItemKind::BookmarkEnd) {
            continue;
        }
        MarkerChange marker;
        marker.node = item.node.internal_object();
        marker.kind = item.kind;
        marker.id = item.node.attribute("w:id").value();
        if (item.kind == ItemKind::BookmarkStart) {
            marker.name = item.node.attribute("w:name").value();
            const auto end = endOf.find(marker.node);
            marker.partner = end != endOf.end() ? end->second : pugi::xml_node();
        }
        window->markers.push_back(std::move(marker));
    }
    for (const auto& field : map.fields) {
        window->fieldBegins.push_back(
            map.items[static_cast<std::size_t>(field.begin)].node.internal_object());
    }
    return window;
}

void Story::edited(const StoryWindow& window) {
    if (!segmentsRead_ || window_.get() != &window || window.version != segments_.version()) {
        changed();
        return;
    }
    const auto was = std::move(window_);
    auto now = read(was->from, was->to, was->before, was->stop);
    if (now->map.items.empty()) {
        changed();
        return;
    }
    const auto first = was->before ? was->before.next_sibling() : root_.first_child();
    auto fresh = StorySegments::cut(root_, now->map, first);
    now->to = was->from + static_cast<int>(fresh.size()) - 1;
    segments_.replace(was->from, was->to, std::move(fresh));
    now->version = segments_.version();
    for (auto* begin : was->fieldBegins) {
        fieldBegins_.erase(begin);
    }
    fieldBegins_.insert(now->fieldBegins.begin(), now->fieldBegins.end());
    noteMarkers(*was, *now);
    window_ = std::move(now);
    ++generation_;
    edited_ = true;
}

// Markers are told apart by node, kind and id: an edit either removes markers or adds new ones
// with a new id, so a freed node whose memory a new marker took cannot pass for the old one.
void Story::noteMarkers(const StoryWindow& was, const StoryWindow& now) {
    std::set<MarkerKey> before;
    std::set<MarkerKey> after;
    for (const auto& marker : was.markers) {
        before.insert(keyOf(marker));
    }
    for (const auto& marker : now.markers) {
        after.insert(keyOf(marker));
    }
    std::vector<MarkerChange> changes;
    for (const auto& marker : was.markers) {
        if (after.count(keyOf(marker)) == 0) {
            changes.push_back(marker);
        }
    }
    for (const auto& marker : now.markers) {
        if (before.count(keyOf(marker)) == 0) {
            changes.push_back(marker);
            changes.back().added = true;
        }
    }
    if (!changes.empty()) {
        markerChanges_.push_back(std::move(changes));
    }
}

bool Story::takeMarkerChanges(std::vector<std::vector<MarkerChange>>& changes) {
    changes = std::move(markerChanges_);
    markerChanges_.clear();
    const bool followed = markersFollowed_;
    markersFollowed_ = true;
    return followed;
}

void Story::changed() {
    ++generation_;
    edited_ = true;
    segmentsRead_ = false;
    window_.reset();
    markerChanges_.clear();
    markersFollowed_ = false;
}

} // namespace wordbm::ooxml
