#include "engine/slip/SlipCanvasName.h"

#include "data/KnownFields.h"

namespace wordbm {

namespace {

constexpr std::string_view Stem = "ESQRMake";

} // namespace

std::string SlipCanvasName::Current(std::string_view code) {
    const std::string field = std::string(Stem) + std::string(code);
    // The bookmark maker owns the prefix; a canvas name is its result up to the "_" before the digits.
    const std::string made = KnownFields::BookmarkNameMake(field);
    return made.substr(0, made.rfind('_'));
}

std::string SlipCanvasName::Previous(std::string_view code) {
    return "kdx5_" + std::string(Stem) + std::string(code);
}

} // namespace wordbm
