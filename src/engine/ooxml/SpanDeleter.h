#pragma once

#include "engine/ooxml/TextMap.h"

#include <functional>
#include <string>
#include <vector>

namespace wordbm::ooxml {

// Removes the items between two cuts that lie on item boundaries (the runs were split there).
// Characters go; paragraph marks join their paragraph with the next one, which lends its properties,
// as in Word; a field or bookmark goes only when it lies wholly inside, otherwise its markers and
// code stay (a half-deleted field keeps working, a bookmark shrinks).
class SpanDeleter {
public:
    using RemovalHook = std::function<void(pugi::xml_node)>;

    SpanDeleter(const TextMap& map, RemovalHook removing) : map_(map), removing_(std::move(removing)) {}

    void erase(int from, int to);

    // Joins a paragraph with the following one: the first node survives (so locations in it stay valid)
    // and takes the second's properties. False when no paragraph follows in the same container.
    static bool joinWithNext(pugi::xml_node paragraph);

private:
    std::vector<bool> wholeFieldItems(int from, int to) const;
    std::vector<std::string> bookmarksInside(int from, int to) const;
    void removeLeaf(pugi::xml_node leaf);
    void removeSimpleField(pugi::xml_node field, int from, int to);

    const TextMap& map_;
    RemovalHook removing_;
    std::vector<pugi::xml_node> emptiedRuns_;
    std::vector<int> removedMarkers_; // items whose nodes are freed already
};

} // namespace wordbm::ooxml
