#pragma once

#include "engine/ooxml/FenwickTree.h"
#include "engine/ooxml/TextMap.h"

#include <cstdint>
#include <unordered_map>
#include <vector>

namespace wordbm::ooxml {

// A story's top-level XML children cut into segments, so that an edit re-reads only the segments it
// touches. A segment ends with a paragraph mark that stands directly in the story root with no field
// open across it; so a field always lies within one segment, and the offsets around a segment's
// border (text before, markers after) read the same in the segment as in the whole story. Segment
// lengths are kept in a Fenwick tree: an offset finds its segment and a segment its first offset in
// O(log n).
class StorySegments {
public:
    struct Segment {
        pugi::xml_node first; // unused for the first segment: it begins with the root's first child
        long length = 0;
        int marks = 0; // paragraph marks
    };

    // Cuts the children of `root` by their table (built over all of them).
    void build(pugi::xml_node root, const TextMap& whole);
    // Cuts the children a table was built over, from `first` on, into segments.
    static std::vector<Segment> cut(pugi::xml_node root, const TextMap& map, pugi::xml_node first);
    // Puts `fresh` in place of segments [from, to].
    void replace(int from, int to, std::vector<Segment> fresh);

    int count() const { return static_cast<int>(segments_.size()); }
    long length() const { return lengths_.total(); }
    long startOf(int segment) const { return lengths_.before(segment); }
    bool hasParagraph() const { return marks_ > 0; }
    // The segment holding `offset`; the last one for the story's end and beyond.
    int holding(long offset) const;
    // The segment holding a node of the story (a node in the root, or the root itself: the first).
    int holding(pugi::xml_node node) const;
    pugi::xml_node first(int segment) const;
    // The first node behind the segment (null for the last).
    pugi::xml_node stop(int segment) const;
    // Changes whenever segments are renumbered, so that a window of an older numbering is refused.
    std::uint64_t version() const { return version_; }

private:
    // Sums and node look-ups made anew, for a changed number of segments.
    void renumber();
    // The top-level children of segments [from, to] by their segment.
    void assign(int from, int to);

    pugi::xml_node root_;
    std::vector<Segment> segments_;
    FenwickTree lengths_;
    int marks_ = 0;
    std::uint64_t version_ = 0;
    // Every top-level child by its segment; nodes removed meanwhile may linger but are never asked
    // for, as a look-up climbs from a live node to the top level first.
    std::unordered_map<pugi::xml_node_struct*, int> segmentOf_;
};

} // namespace wordbm::ooxml
