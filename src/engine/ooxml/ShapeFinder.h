#pragma once

#include "engine/ooxml/DrawingCanvas.h"
#include "engine/ooxml/ShapeXml.h"

#include <pugixml.hpp>
#include <vector>

namespace wordbm::ooxml {

// Finds the drawings of a part or story.
class ShapeFinder {
public:
    // The top-level shapes under `scope` (a part's root, the body, a paragraph...) in document
    // order: DrawingML anchors and inlines, read once from the Choice where stored twice, and legacy
    // VML shapes of w:pict. Shapes inside canvases, groups and text boxes of these are not listed;
    // OLE objects are not shapes.
    static std::vector<ShapeXml> shapes(pugi::xml_node scope);

    // The canvases among shapes(scope), DrawingML and legacy ones.
    static std::vector<DrawingCanvas> canvases(pugi::xml_node scope);

    // The highest drawing id (wp:docPr and every cNvPr) under `scope`, 0 without any: a new
    // drawing takes the highest of all the document's parts plus one.
    static unsigned maxDrawingId(pugi::xml_node scope);
};

} // namespace wordbm::ooxml
