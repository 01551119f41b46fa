#pragma once

#include "engine/ooxml/VmlStyle.h"

#include <pugixml.hpp>

namespace wordbm::ooxml {

// LibreOffice 7.4 cannot lay out a picture that stands in the text of a text box inside a VML group
// (a canvas, say): it stretches the picture over the whole box and drops the box's text. So a
// picture that opens a box's text leaves the fallback's copy of that text and is drawn as a picture
// shape of the group instead, where Word lays it out: at the box's corner plus its inner margins, at
// its own size. The DrawingML, which Word reads, keeps the picture in the text.
class VmlTextboxPictures {
public:
    // `box`: the fallback's v:shape of the text box, holding its copied text; `shape`: the wps:wsp it
    // was written from; `placement`: the box's style in group units. True when a picture shape was
    // added after `box`; it uses the picture shape type.
    static bool drawBeside(pugi::xml_node box, pugi::xml_node shape, const VmlStyle& placement);
};

} // namespace wordbm::ooxml
