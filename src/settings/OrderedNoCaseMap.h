#pragma once

#include <cstddef>
#include <list>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace wordbm {

// Insertion-ordered map whose keys compare ignoring letter case, as the collections and
// dictionaries of the settings classes do. The list keeps the order and the key text as
// written; the hash index keeps lookups constant so large files don't read in quadratic time.
template <typename T> class OrderedNoCaseMap {
public:
    using Entry = std::pair<std::string, T>;
    using const_iterator = typename std::list<Entry>::const_iterator;

    OrderedNoCaseMap() = default;
    OrderedNoCaseMap(const OrderedNoCaseMap& other) : entries_(other.entries_) { rebuildIndex(); }
    OrderedNoCaseMap(OrderedNoCaseMap&&) noexcept = default;
    OrderedNoCaseMap& operator=(const OrderedNoCaseMap& other) {
        if (this != &other) {
            entries_ = other.entries_;
            rebuildIndex();
        }
        return *this;
    }
    OrderedNoCaseMap& operator=(OrderedNoCaseMap&&) noexcept = default;

    // ASCII and the Latin-1 capitals (UTF-8 "C3 80".."C3 9E") fold to lower case, so "Ä" and "ä"
    // name the same entry as they would under the classic text comparison.
    static std::string foldKey(std::string_view key) {
        std::string folded(key);
        for (std::size_t i = 0; i < folded.size(); ++i) {
            const auto byte = static_cast<unsigned char>(folded[i]);
            if (byte >= 'A' && byte <= 'Z') {
                folded[i] = static_cast<char>(byte + 32);
            } else if (byte == 0xC3 && i + 1 < folded.size()) {
                const auto next = static_cast<unsigned char>(folded[i + 1]);
                if (next >= 0x80 && next <= 0x9E && next != 0x97) {
                    folded[i + 1] = static_cast<char>(next + 32);
                }
                ++i;
            }
        }
        return folded;
    }

    bool contains(std::string_view key) const { return index_.count(foldKey(key)) != 0; }

    const T* find(std::string_view key) const {
        const auto found = index_.find(foldKey(key));
        return found == index_.end() ? nullptr : &found->second->second;
    }

    T* find(std::string_view key) {
        const auto found = index_.find(foldKey(key));
        return found == index_.end() ? nullptr : &found->second->second;
    }

    // Dictionary style: an existing entry keeps its place and its key text.
    T& assign(std::string key, T value) {
        if (T* existing = find(key)) {
            *existing = std::move(value);
            return *existing;
        }
        return append(std::move(key), std::move(value));
    }

    // Collection style: the entry goes to the end under the key text given now.
    T& moveToEnd(std::string key, T value) {
        erase(key);
        return append(std::move(key), std::move(value));
    }

    bool erase(std::string_view key) {
        const auto found = index_.find(foldKey(key));
        if (found == index_.end()) {
            return false;
        }
        entries_.erase(found->second);
        index_.erase(found);
        return true;
    }

    void clear() {
        index_.clear();
        entries_.clear();
    }

    std::size_t size() const { return entries_.size(); }
    bool empty() const { return entries_.empty(); }
    const_iterator begin() const { return entries_.begin(); }
    const_iterator end() const { return entries_.end(); }
    const Entry& front() const { return entries_.front(); }

private:
    T& append(std::string key, T value) {
        std::string folded = foldKey(key);
        entries_.emplace_back(std::move(key), std::move(value));
        index_.emplace(std::move(folded), std::prev(entries_.end()));
        return entries_.back().second;
    }

    void rebuildIndex() {
        index_.clear();
        for (auto it = entries_.begin(); it != entries_.end(); ++it) {
            index_.emplace(foldKey(it->first), it);
        }
    }

    std::list<Entry> entries_;
    std::unordered_map<std::string, typename std::list<Entry>::iterator> index_;
};

} // namespace wordbm
