#include "engine/slip/SlipCanvasName.h"

#include "data/KnownFields.h"
#include "engine/word/Document.h"
#include "engine/word/Shapes.h"

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

std::vector<word::ShapePtr> SlipCanvasName::Canvases(word::Document& doc, std::string_view code) {
    const word::ShapesPtr shapes = doc.Shapes();
    for (const std::string& name : {Current(code), Previous(code)}) {
        std::vector<word::ShapePtr> found;
        for (int index = 1; index <= shapes->Count(); ++index) {
            word::ShapePtr shape = shapes->Item(index);
            if (shape->Name() == name) {
                found.push_back(std::move(shape));
            }
        }
        if (!found.empty()) {
            return found;
        }
    }
    return {};
}

} // namespace wordbm
