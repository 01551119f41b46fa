#include "data/TagList.h"

#include "support/Errors.h"
#include "support/Regional.h"
#include "support/Strings.h"

#include <algorithm>

namespace wordbm {

namespace {

// Folds ASCII letters and the Latin-1 letters of UTF-8 (À..Þ, × aside), so "PRÜFUNG" and
// "prüfung" name the same tag, as keys of the classic collections compare.
std::string foldCase(std::string_view text) {
    std::string folded = toLowerAscii(text);
    for (std::size_t i = 0; i + 1 < folded.size(); ++i) {
        const auto lead = static_cast<unsigned char>(folded[i]);
        const auto next = static_cast<unsigned char>(folded[i + 1]);
        if (lead == 0xC3 && next >= 0x80 && next <= 0x9E && next != 0x97) {
            folded[i + 1] = static_cast<char>(next + 0x20);
            ++i;
        }
    }
    return folded;
}

template <typename Entries> auto findByKey(const Entries& entries, const std::string& key) {
    return std::find_if(entries.begin(), entries.end(),
                        [&key](const auto& entry) { return entry.key == key; });
}

template <typename Entries> void eraseByKey(Entries& entries, const std::string& key) {
    std::erase_if(entries, [&key](const auto& entry) { return entry.key == key; });
}

template <typename Entries> const auto& entryAt(const Entries& entries, std::int32_t position) {
    if (position < 1 || static_cast<std::size_t>(position) > entries.size()) {
        throw InvalidArgumentError();
    }
    return entries[static_cast<std::size_t>(position) - 1];
}

} // namespace

std::string TagList::keyOf(std::string_view name) {
    return foldCase(trim(name));
}

std::vector<TagList::TagEntry>::const_iterator TagList::findTag(const std::string& key) const {
    return findByKey(tags_, key);
}

std::vector<TagList::ValueEntry>::const_iterator TagList::findValue(const std::string& key) const {
    return findByKey(values_, key);
}

void TagList::Clear() {
    tags_.clear();
    values_.clear();
}

bool TagList::Tag(std::string_view name) const {
    return findTag(keyOf(name)) != tags_.end();
}

void TagList::Tag(std::string_view name, bool present) {
    const std::string key = keyOf(name);
    eraseByKey(tags_, key);
    if (present) {
        tags_.push_back({key, trim(name)});
    }
}

Variant TagList::Value(std::string_view name) const {
    const std::string key = keyOf(name);
    if (findTag(key) == tags_.end()) {
        return Variant::null();
    }
    const auto value = findValue(key);
    return value == values_.end() ? Variant() : value->value;
}

void TagList::Value(std::string_view name, Variant value) {
    Tag(name, true);
    const std::string key = keyOf(name);
    eraseByKey(values_, key);
    values_.push_back({key, std::move(value)});
}

std::int32_t TagList::ValueLong(std::string_view name) const {
    const Variant value = Value(name);
    if (const auto* flag = value.get<bool>()) {
        return *flag ? -1 : 0;
    }
    const auto number = regional::parseNumber(value.toText());
    return number ? regional::toLong(*number) : 0;
}

std::string TagList::ValueString(std::string_view name) const {
    return Value(name).toText();
}

std::string TagList::List() const {
    std::string text;
    for (const TagEntry& tag : tags_) {
        if (!text.empty()) {
            text += ListSeparator;
        }
        text += tag.name;
        // An unset value writes the name bare; an empty string still writes "name=".
        const auto value = findValue(tag.key);
        if (value != values_.end() && !value->value.isEmpty()) {
            text += ValueSeparator;
            text += value->value.toText();
        }
    }
    if (TrailingSeparator && !text.empty()) {
        text += ListSeparator;
    }
    return text;
}

void TagList::List(std::string_view text) {
    Clear();
    if (text.empty()) {
        return;
    }
    // Empty pieces are not skipped: each one sets the tag with the empty name.
    for (const std::string& piece : split(text, ListSeparator)) {
        const std::size_t at = piece.find(ValueSeparator);
        if (at == std::string::npos) {
            Value(piece, Variant(true));
        } else {
            Value(std::string_view(piece).substr(0, at), Variant(piece.substr(at + ValueSeparator.size())));
        }
    }
}

std::string TagList::Item(std::int32_t position) const {
    return entryAt(tags_, position).name;
}

Variant TagList::ItemValue(std::int32_t position) const {
    return entryAt(values_, position).value;
}

} // namespace wordbm
