#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace wordbm {

// The engine's list of known field names (export fields plus the QR names) and the rules by which
// an engine bookmark name carries a field name. Lookups ignore letter case and give back the
// spelling the name was added with.
class KnownFields {
public:
    // Divides the groups in the field chooser; it has no key, so it is never found.
    static constexpr std::string_view Separator = "-";

    // Loads the built-in list of the 55 export fields (plus the QR names).
    void FieldsBESR();

    // Replaces the list: ";"-separated names, each trimmed and unquoted, empty ones skipped;
    // the separator and QR groups are appended.
    void Fields(std::string_view text);
    // The list text last stored.
    const std::string& Fields() const { return listText_; }

    // The stored spelling of a known name, or "" when the name is unknown.
    std::string FieldKnown(std::string_view name) const;

    // "kdx6_" + field + "_" + six random digits, or with numberFirst the older
    // "kdx6_" + digits + "_" + field.
    static std::string BookmarkNameMake(std::string_view field, bool numberFirst = false);
    // A name-first bookmark name that `taken` does not know yet. Six random digits repeat within a
    // few thousand draws, and adding a name that exists would move that bookmark away.
    static std::string UnusedBookmarkName(std::string_view field,
                                          const std::function<bool(const std::string&)>& taken);

    // The known field an engine bookmark (prefix "kdx6_" or "kdx5_") stands for, an "ESQR..."
    // slip name as it stands, or "" for any other bookmark.
    std::string BookmarkFieldGet(std::string_view bookmark, bool numberFirst = false) const;

    // Names and separators in chooser order.
    const std::vector<std::string>& Items() const { return items_; }
    int SeparatorCount() const { return separatorCount_; }

    // Six digits from a draw in [0, 1): scaled to a million, rounded, zero-padded; a draw that
    // rounds up to 1000000 keeps its last six digits.
    static std::string suffixDigits(double draw);

private:
    void add(std::string name);
    void addSeparator();
    std::string fieldFor(const std::string& candidate) const;

    std::string listText_;
    std::vector<std::string> items_;
    std::unordered_map<std::string, std::size_t> indexByKey_; // folded name -> position in items_
    int separatorCount_ = 0;
};

} // namespace wordbm
