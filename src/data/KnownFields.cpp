#include "data/KnownFields.h"

#include "data/ExportFieldCatalogue.h"
#include "support/Regional.h"
#include "support/Strings.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <random>
#include <utility>

namespace wordbm {

namespace {

constexpr std::string_view currentPrefix = "kdx6_";
constexpr std::string_view previousPrefix = "kdx5_"; // bookmarks of the suite's previous generation
constexpr std::string_view slipPrefix = "ESQR";
constexpr std::size_t digitCount = 6;

// The bookmark names through which the merge run places QR-bill data, in chooser groups.
// clang-format off
constexpr std::array<std::string_view, 11> qrItems{
    KnownFields::Separator, "QRText", "QRCode",
    KnownFields::Separator, "Receiver", "ReceiverFinal", "ReceiverBlock", "Sender",
    KnownFields::Separator, "Currency", "Amount"};
// clang-format on

double freshDraw() {
    // Seeded anew for every name; the device keeps names made within one clock tick apart.
    std::random_device device;
    const auto ticks = std::chrono::steady_clock::now().time_since_epoch().count();
    std::seed_seq seed{device(), static_cast<unsigned>(ticks)};
    std::mt19937 engine(seed);
    return std::uniform_real_distribution<double>(0.0, 1.0)(engine);
}

// The field name a bookmark carries under one prefix, not yet checked; "" when the name does not
// have the layout.
std::string candidateOf(std::string_view bookmark, std::string_view prefix, bool numberFirst) {
    if (bookmark.size() < prefix.size() + digitCount + 2 || !bookmark.starts_with(prefix)) {
        return {};
    }
    if (numberFirst) {
        const std::size_t separatorAt = prefix.size() + digitCount;
        if (!regional::isNumeric(bookmark.substr(prefix.size(), digitCount)) ||
            bookmark[separatorAt] != '_') {
            return {};
        }
        return trim(bookmark.substr(separatorAt + 1));
    }
    const std::size_t digitsAt = bookmark.size() - digitCount;
    if (!regional::isNumeric(bookmark.substr(digitsAt)) || bookmark[digitsAt - 1] != '_') {
        return {};
    }
    return trim(bookmark.substr(prefix.size(), digitsAt - 1 - prefix.size()));
}

} // namespace

void KnownFields::FieldsBESR() {
    Fields(ExportFieldCatalogue::FieldListText());
}

void KnownFields::Fields(std::string_view text) {
    listText_ = std::string(text);
    items_.clear();
    indexByKey_.clear();
    separatorCount_ = 0;
    for (const std::string& piece : split(text, ";")) {
        add(Unquote(piece));
    }
    for (std::string_view item : qrItems) {
        if (item == Separator) {
            addSeparator();
        } else {
            add(std::string(item));
        }
    }
}

std::string KnownFields::FieldKnown(std::string_view name) const {
    const auto found = indexByKey_.find(toLowerAscii(name));
    return found == indexByKey_.end() ? std::string() : items_[found->second];
}

std::string KnownFields::BookmarkNameMake(std::string_view field, bool numberFirst) {
    const std::string name = trim(field);
    const std::string digits = suffixDigits(freshDraw());
    const std::string prefix(currentPrefix);
    return numberFirst ? prefix + digits + "_" + name : prefix + name + "_" + digits;
}

std::string KnownFields::UnusedBookmarkName(std::string_view field,
                                            const std::function<bool(const std::string&)>& taken) {
    std::string name = BookmarkNameMake(field);
    while (taken(name)) {
        name = BookmarkNameMake(field);
    }
    return name;
}

std::string KnownFields::BookmarkFieldGet(std::string_view bookmark, bool numberFirst) const {
    for (std::string_view prefix : {currentPrefix, previousPrefix}) {
        std::string field = fieldFor(candidateOf(bookmark, prefix, numberFirst));
        if (!field.empty()) {
            return field;
        }
    }
    return {};
}

std::string KnownFields::suffixDigits(double draw) {
    const long long scaled = std::llround(std::clamp(draw, 0.0, 1.0) * 1000000.0);
    return zeroPad(scaled, static_cast<int>(digitCount));
}

void KnownFields::add(std::string name) {
    if (name.empty()) {
        return;
    }
    // A keyed collection refuses a second entry under the same key: the first spelling stays.
    if (indexByKey_.try_emplace(toLowerAscii(name), items_.size()).second) {
        items_.push_back(std::move(name));
    }
}

void KnownFields::addSeparator() {
    items_.emplace_back(Separator);
    ++separatorCount_;
}

std::string KnownFields::fieldFor(const std::string& candidate) const {
    // The slip's own bookmarks are not in the list and are taken as they stand.
    if (candidate.starts_with(slipPrefix)) {
        return candidate;
    }
    return FieldKnown(candidate);
}

} // namespace wordbm
