#pragma once

#include <vector>

namespace wordbm::ooxml {

// Lengths of consecutive stretches with their running sums: changing one length and finding the
// stretch that holds an offset both take O(log n), so an edit does not renumber what follows it.
class FenwickTree {
public:
    FenwickTree() = default;
    explicit FenwickTree(const std::vector<long>& values);

    int size() const { return static_cast<int>(values_.size()); }
    long value(int index) const { return values_[static_cast<std::size_t>(index)]; }
    void set(int index, long value);
    // The sum of the values before `index`.
    long before(int index) const;
    long total() const { return total_; }
    // The first index whose stretch ends behind `offset`, that is before(i) <= offset <
    // before(i) + value(i) for a stretch that is not empty; size() when offset >= total().
    int holding(long offset) const;

private:
    std::vector<long> values_;
    std::vector<long> tree_; // 1-based partial sums
    long total_ = 0;
};

} // namespace wordbm::ooxml
