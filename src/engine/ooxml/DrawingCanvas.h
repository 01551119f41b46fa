#pragma once

#include "engine/ooxml/DrawingRect.h"
#include "engine/ooxml/ShapeXml.h"

#include <pugixml.hpp>
#include <string_view>
#include <vector>

namespace wordbm::ooxml {

// A drawing canvas: a Word 2010 canvas (wpc:wpc) stored, as Word stores it, in an
// mc:AlternateContent whose Fallback is a VML group with editas="canvas". Word reads the Choice;
// LibreOffice 7.4 cannot place a canvas by itself and draws the fallback instead, so every change
// made here rebuilds the fallback from the Choice. Legacy canvases (VML only) can be listed, not
// added to.
class DrawingCanvas {
public:
    DrawingCanvas() = default;
    // Invalid unless `shape` is a canvas.
    explicit DrawingCanvas(ShapeXml shape);

    // Adds a canvas in a new run of `paragraph` (before `before`, a child of the paragraph, or at its
    // end), placed at `onPage` relative to the page, in front of the text and of the part's other
    // drawings. `id` must be unique among the document's drawing ids (see ShapeFinder::maxDrawingId).
    // Throws AutomationError when `paragraph` is no w:p.
    static DrawingCanvas create(pugi::xml_node paragraph, const DrawingRect& onPage, unsigned id,
                                std::string_view name, pugi::xml_node before = {});

    // The canvas that holds `node` (an item, a text box's content...); invalid when none does.
    static DrawingCanvas enclosing(pugi::xml_node node);

    bool valid() const { return shape_.valid(); }
    const ShapeXml& shape() const { return shape_; }
    // The wpc:wpc element; null for a legacy canvas.
    pugi::xml_node content() const;
    // Whether items can be added: a DrawingML canvas, not a legacy one.
    bool editable() const { return static_cast<bool>(content()); }

    // The canvas's own shapes in drawing order (text boxes, pictures, groups, other shapes).
    std::vector<ShapeXml> items() const;

    // A text box at `inCanvas` (points, relative to the canvas) with Word's defaults: white fill,
    // 0.75 pt black outline, 7.2 pt / 3.6 pt inner margins, and one empty paragraph in its
    // textContent() for the caller to fill. `orientation` is MsoTextOrientation: 1 horizontal,
    // 2 upward, 3 downward. Throws AutomationError when the canvas is not editable.
    ShapeXml addTextbox(int orientation, const DrawingRect& inCanvas, unsigned id, std::string_view name);

    // A picture at `inCanvas` whose image is the part's relationship `relationshipId` (the caller
    // adds the media part and the relationship). Throws AutomationError when not editable.
    ShapeXml addPicture(std::string_view relationshipId, const DrawingRect& inCanvas, unsigned id,
                        std::string_view name);

    bool operator==(const DrawingCanvas&) const = default;

private:
    pugi::xml_node checkedContent() const;
    void refreshFallback() const;

    ShapeXml shape_;
};

} // namespace wordbm::ooxml
