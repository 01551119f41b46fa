#include "engine/ooxml/FenwickTree.h"

namespace wordbm::ooxml {

FenwickTree::FenwickTree(const std::vector<long>& values) : values_(values), tree_(values.size() + 1, 0) {
    const auto n = values_.size();
    for (std::size_t i = 1; i <= n; ++i) {
        tree_[i] += values_[i - 1];
        total_ += values_[i - 1];
        const auto parent = i + (i & (~i + 1));
        if (parent <= n) {
            tree_[parent] += tree_[i];
        }
    }
}

void FenwickTree::set(int index, long value) {
    const long delta = value - values_[static_cast<std::size_t>(index)];
    values_[static_cast<std::size_t>(index)] = value;
    total_ += delta;
    for (auto i = static_cast<std::size_t>(index) + 1; i < tree_.size(); i += i & (~i + 1)) {
        tree_[i] += delta;
    }
}

long FenwickTree::before(int index) const {
    long sum = 0;
    for (auto i = static_cast<std::size_t>(index); i > 0; i -= i & (~i + 1)) {
        sum += tree_[i];
    }
    return sum;
}

int FenwickTree::holding(long offset) const {
    if (offset < 0) {
        return 0;
    }
    // Descends the implicit tree: `at` stays the largest position whose sum does not exceed offset.
    std::size_t at = 0;
    std::size_t step = 1;
    while (step * 2 < tree_.size()) {
        step *= 2;
    }
    for (; step > 0; step /= 2) {
        if (at + step < tree_.size() && tree_[at + step] <= offset) {
            at += step;
            offset -= tree_[at];
        }
    }
    return static_cast<int>(at);
}

} // namespace wordbm::ooxml
