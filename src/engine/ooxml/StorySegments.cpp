#include "engine/ooxml/StorySegments.h"

#include <algorithm>

namespace wordbm::ooxml {

namespace {

bool opensField(ItemKind kind) {
    return kind == ItemKind::FieldBegin || kind == ItemKind::SimpleFieldBegin;
}

bool closesField(ItemKind kind) {
    return kind == ItemKind::FieldEnd || kind == ItemKind::SimpleFieldEnd;
}

} // namespace

std::vector<StorySegments::Segment> StorySegments::cut(pugi::xml_node root, const TextMap& map,
                                                       pugi::xml_node first) {
    std::vector<Segment> segments{Segment{first}};
    int depth = 0;
    pugi::xml_node closedBy; // the paragraph whose mark ended the last segment
    for (const auto& item : map.items) {
        if (closedBy) {
            segments.push_back(Segment{closedBy.next_sibling()});
            closedBy = {};
        }
        auto& segment = segments.back();
        segment.length += item.width;
        depth += opensField(item.kind) ? 1 : closesField(item.kind) ? -1 : 0;
        if (item.kind == ItemKind::ParagraphMark) {
            ++segment.marks;
            if (depth == 0 && item.node.parent() == root) {
                closedBy = item.node;
            }
        }
    }
    // Markers behind the story's last paragraph stay with it: they stand at its end offset.
    if (segments.size() > 1 && segments.back().marks == 0) {
        segments[segments.size() - 2].length += segments.back().length;
        segments.pop_back();
    }
    return segments;
}

void StorySegments::build(pugi::xml_node root, const TextMap& whole) {
    root_ = root;
    segments_ = cut(root, whole, root.first_child());
    renumber();
}

void StorySegments::replace(int from, int to, std::vector<Segment> fresh) {
    for (int s = from; s <= to; ++s) {
        marks_ -= segments_[static_cast<std::size_t>(s)].marks;
    }
    for (const auto& segment : fresh) {
        marks_ += segment.marks;
    }
    const int count = static_cast<int>(fresh.size());
    if (count != to - from + 1) {
        segments_.erase(segments_.begin() + from, segments_.begin() + to + 1);
        segments_.insert(segments_.begin() + from, fresh.begin(), fresh.end());
        renumber();
        return;
    }
    for (int s = from; s <= to; ++s) {
        segments_[static_cast<std::size_t>(s)] = fresh[static_cast<std::size_t>(s - from)];
        lengths_.set(s, fresh[static_cast<std::size_t>(s - from)].length);
    }
    assign(from, to);
}

void StorySegments::renumber() {
    std::vector<long> lengths;
    marks_ = 0;
    for (const auto& segment : segments_) {
        lengths.push_back(segment.length);
        marks_ += segment.marks;
    }
    lengths_ = FenwickTree(lengths);
    segmentOf_.clear();
    assign(0, count() - 1);
    ++version_;
}

void StorySegments::assign(int from, int to) {
    int segment = from;
    const auto end = stop(to);
    for (auto node = first(from); node && node != end; node = node.next_sibling()) {
        while (segment < to && node == first(segment + 1)) {
            ++segment;
        }
        segmentOf_[node.internal_object()] = segment;
    }
}

int StorySegments::holding(long offset) const {
    return std::min(lengths_.holding(offset), count() - 1);
}

int StorySegments::holding(pugi::xml_node node) const {
    auto top = node;
    while (top && top.parent() != root_) {
        top = top.parent();
    }
    const auto found = segmentOf_.find(top.internal_object());
    return top && found != segmentOf_.end() ? found->second : 0;
}

pugi::xml_node StorySegments::first(int segment) const {
    return segment == 0 ? root_.first_child() : segments_[static_cast<std::size_t>(segment)].first;
}

pugi::xml_node StorySegments::stop(int segment) const {
    return segment + 1 < count() ? segments_[static_cast<std::size_t>(segment) + 1].first : pugi::xml_node();
}

} // namespace wordbm::ooxml
