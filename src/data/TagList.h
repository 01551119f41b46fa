#pragma once

#include "support/Variant.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace wordbm {

// An ordered set of tags, each with an optional value, written as one line "name=value;name".
// Names are trimmed and compared ignoring letter case; values are kept as given.
// Kept on purpose: tags and values live in two separate insertion-ordered collections, so
// Remove leaves the value behind (it returns with the tag) and Item/ItemValue index different
// collections. Use Value(Item(i)) for the value of the i-th tag.
class TagList {
public:
    std::string ListSeparator = ";";
    std::string ValueSeparator = "=";
    bool TrailingSeparator = false;

    void Clear();

    bool Tag(std::string_view name) const;
    // Removes the tag; when `present`, appends it again at the end.
    void Tag(std::string_view name, bool present);

    // Null when the tag is absent, Empty when it has no value.
    Variant Value(std::string_view name) const;
    // Makes the tag present (moving it to the end) and moves its new value to the end of the values.
    void Value(std::string_view name, Variant value);
    // 0 unless the value is numeric (True counts -1); throws OverflowError beyond 32 bits.
    std::int32_t ValueLong(std::string_view name) const;
    std::string ValueString(std::string_view name) const;

    std::string List() const;
    void List(std::string_view text);

    void Add(std::string_view name) { Tag(name, true); }
    void Remove(std::string_view name) { Tag(name, false); }
    std::int32_t Count() const { return static_cast<std::int32_t>(tags_.size()); }
    // 1-based; throw InvalidArgumentError outside 1..size of their collection.
    std::string Item(std::int32_t position) const;
    Variant ItemValue(std::int32_t position) const;

private:
    struct TagEntry {
        std::string key;
        std::string name;
    };
    struct ValueEntry {
        std::string key;
        Variant value;
    };

    static std::string keyOf(std::string_view name);
    std::vector<TagEntry>::const_iterator findTag(const std::string& key) const;
    std::vector<ValueEntry>::const_iterator findValue(const std::string& key) const;

    std::vector<TagEntry> tags_;
    std::vector<ValueEntry> values_;
};

} // namespace wordbm
