#pragma once

#include "engine/ooxml/VmlStyle.h"

#include <cstddef>
#include <pugixml.hpp>

namespace wordbm::ooxml {

// Builds the VML Fallback of an mc:AlternateContent from its DrawingML Choice, as Word writes it:
// a canvas becomes a v:group with editas="canvas", text boxes v:shape with a v:textbox holding a
// copy of the text, pictures v:imagedata. Word reads the Choice; LibreOffice 7.4 draws the
// fallback (it cannot place a canvas by itself), so the fallback must follow every change.
// The document model calls regenerateAround() after editing the text of a text box, or
// regenerateCanvases() on a part before saving it.
class VmlFallback {
public:
    // Replaces the Fallback; false (nothing changed) when the Choice holds no canvas, group, shape or
    // picture drawing.
    static bool regenerate(pugi::xml_node alternateContent);

    // Regenerates every mc:AlternateContent whose Choice holds `node`, the innermost first, so that
    // an edit deep inside a text box reaches each copy of it.
    static void regenerateAround(pugi::xml_node node);

    // Regenerates the fallback of every canvas under `scope` (stored twice or not); returns how
    // many. A canvas without an mc:AlternateContent gets one.
    static std::size_t regenerateCanvases(pugi::xml_node scope);

private:
    static VmlStyle placement(pugi::xml_node frame);
    static void writeWrap(pugi::xml_node element, pugi::xml_node frame);
};

} // namespace wordbm::ooxml
