#pragma once

#include "engine/word/Forward.h"

#include <string>
#include <string_view>
#include <vector>

namespace wordbm {

// The names of the slip's canvases: the engine's bookmark prefix applied to "ESQRMake" + the part's
// code ("ST", "ET", "ZT"), without the random suffix that only bookmarks need.
class SlipCanvasName {
public:
    static std::string Current(std::string_view code);
    // As the suite's previous generation named them; still recognised when placing marks.
    static std::string Previous(std::string_view code);
    // The part's canvases in the document: those with the current name, or, only when there is
    // none, those with the previous one. May throw AutomationError.
    static std::vector<word::ShapePtr> Canvases(word::Document& doc, std::string_view code);
};

} // namespace wordbm
