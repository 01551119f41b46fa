#include "engine/ooxml/ShapeFinder.h"

#include "engine/ooxml/DrawingXml.h"
#include "engine/word/WordConstants.h"

#include <algorithm>
#include <limits>
#include <string_view>

namespace wordbm::ooxml {

namespace {

using drawingXml::named;
using drawingXml::Visit;

bool isVmlShape(pugi::xml_node node) {
    return drawingXml::prefix(node) == "v" && !named(node, "v:shapetype");
}

// Word reads the Choice of a drawing stored twice; the Fallback is the same drawing again.
bool skipped(pugi::xml_node node) {
    return named(node, "w:object") || (named(node, "mc:Fallback") && node.parent().child("mc:Choice"));
}

} // namespace

std::vector<ShapeXml> ShapeFinder::shapes(pugi::xml_node scope) {
    std::vector<ShapeXml> found;
    drawingXml::forEachElement(scope, [&](pugi::xml_node node) {
        if (named(node, "wp:anchor") || named(node, "wp:inline")) {
            found.emplace_back(node);
            return Visit::Skip;
        }
        if (named(node, "w:pict")) {
            for (const pugi::xml_node child : node.children()) {
                if (isVmlShape(child)) {
                    found.emplace_back(child);
                }
            }
            return Visit::Skip;
        }
        return skipped(node) ? Visit::Skip : Visit::Enter;
    });
    return found;
}

std::vector<DrawingCanvas> ShapeFinder::canvases(pugi::xml_node scope) {
    std::vector<DrawingCanvas> found;
    for (const ShapeXml& shape : shapes(scope)) {
        if (shape.type() == word::wd::msoCanvas) {
            found.emplace_back(shape);
        }
    }
    return found;
}

unsigned ShapeFinder::maxDrawingId(pugi::xml_node scope) {
    std::int64_t highest = 0;
    drawingXml::forEachElement(scope, [&](pugi::xml_node node) {
        if (named(node, "wp:docPr") || drawingXml::localName(node) == "cNvPr") {
            highest = std::max(highest, drawingXml::integer(node, "id"));
        }
        return Visit::Enter;
    });
    return static_cast<unsigned>(std::min<std::int64_t>(highest, std::numeric_limits<unsigned>::max()));
}

} // namespace wordbm::ooxml
