#pragma once

#include "engine/ooxml/DrawingRect.h"

#include <pugixml.hpp>
#include <string>
#include <string_view>

namespace wordbm::ooxml {

// One shape of a part, as a handle the size of a pointer on its XML element:
// - a top-level DrawingML drawing: its wp:anchor or wp:inline (in the Choice when stored twice);
// - an item of a canvas or group: wps:wsp, pic:pic or wpg:wgp;
// - a legacy VML shape: the v:* element in w:pict (or inside a v:group).
// Changes made here rebuild the VML fallback of the mc:AlternateContent that holds the shape.
class ShapeXml {
public:
    // Word's shape types (MsoShapeType) besides group 6, picture 13, text box 17 and canvas 20.
    static constexpr int AutoShape = 1;
    static constexpr int Chart = 3;
    static constexpr int Freeform = 5;
    static constexpr int Line = 9;
    static constexpr int SmartArt = 24;

    ShapeXml() = default;
    explicit ShapeXml(pugi::xml_node element) : node_(element) {}

    bool valid() const { return static_cast<bool>(node_); }
    pugi::xml_node node() const { return node_; }
    // What the drawing holds (wpc:wpc, wps:wsp, wpg:wgp, pic:pic ...); the element itself for
    // canvas items and VML shapes.
    pugi::xml_node content() const;
    bool isVml() const;

    // docPr's name at the top level, cNvPr's inside canvases and groups, id for VML.
    std::string name() const;
    void setName(std::string_view name);
    // MsoShapeType: canvas 20, group 6, picture 13, text box 17 (a shape made as a text box),
    // line 9, freeform 5, chart 3, SmartArt 24, any other shape 1.
    int type() const;

    // In points. Top level: offset from what horizontalRelativeTo()/verticalRelativeTo() name
    // (0 when the drawing is aligned rather than offset, and for inline ones). Canvas and group
    // items: relative to their canvas or group.
    DrawingRect geometry() const;
    bool isInline() const;
    // DrawingML's relativeFrom names ("page", "margin", "column", "paragraph", "character",
    // "line"...); empty for inline drawings and items.
    std::string horizontalRelativeTo() const;
    std::string verticalRelativeTo() const;

    // The outline (for a canvas: the canvas's own border).
    bool lineVisible() const;
    void setLineVisible(bool visible);

    // The w:txbxContent of a text box (the DrawingML one when stored twice); null for others.
    pugi::xml_node textContent() const;
    // True when the text box holds any character besides paragraph marks.
    bool hasText() const;

    // Removes the shape with everything stored for it (both forms, and a run left empty).
    void remove();

    // The mc:AlternateContent whose Choice holds the shape, at any depth; null when none.
    pugi::xml_node alternateContent() const;

    bool operator==(const ShapeXml&) const = default;

private:
    pugi::xml_node properties() const;
    pugi::xml_node nameNode(bool create) const;
    void refreshFallback() const;

    pugi::xml_node node_;
};

} // namespace wordbm::ooxml
