#include "engine/ooxml/DrawingCanvas.h"

#include "engine/ooxml/DrawingNamespaces.h"
#include "engine/ooxml/DrawingXml.h"
#include "engine/ooxml/Emu.h"
#include "engine/ooxml/VmlFallback.h"
#include "engine/word/AutomationError.h"
#include "engine/word/WordConstants.h"

#include <algorithm>
#include <string>

namespace wordbm::ooxml {

namespace {

using drawingXml::append;
using drawingXml::named;

// Word numbers the stacking order of floating drawings from here, in steps of 1024.
constexpr std::int64_t FirstRelativeHeight = 251658240;
constexpr std::int64_t RelativeHeightStep = 1024;

std::string text(std::int64_t value) {
    return std::to_string(value);
}

std::int64_t nextRelativeHeight(pugi::xml_node anywhere) {
    std::int64_t highest = FirstRelativeHeight;
    drawingXml::forEachElement(anywhere.root(), [&](pugi::xml_node node) {
        if (named(node, "wp:anchor")) {
            highest = std::max(highest, drawingXml::integer(node, "relativeHeight"));
            return drawingXml::Visit::Skip;
        }
        return drawingXml::Visit::Enter;
    });
    return highest + RelativeHeightStep;
}

void appendPosition(pugi::xml_node anchor, const char* axis, float points) {
    pugi::xml_node position = append(anchor, axis, {{"relativeFrom", "page"}});
    position.append_child("wp:posOffset").text().set(text(emu::fromPoints(points)).c_str());
}

pugi::xml_node appendAnchor(pugi::xml_node drawing, const DrawingRect& onPage, unsigned id,
                            std::string_view name) {
    pugi::xml_node anchor = append(drawing, "wp:anchor",
                                   {{"distT", "0"},
                                    {"distB", "0"},
                                    {"distL", "114300"},
                                    {"distR", "114300"},
                                    {"simplePos", "0"},
                                    {"relativeHeight", text(nextRelativeHeight(drawing))},
                                    {"behindDoc", "0"},
                                    {"locked", "0"},
                                    {"layoutInCell", "1"},
                                    {"allowOverlap", "1"}});
    append(anchor, "wp:simplePos", {{"x", "0"}, {"y", "0"}});
    appendPosition(anchor, "wp:positionH", onPage.left);
    appendPosition(anchor, "wp:positionV", onPage.top);
    append(anchor, "wp:extent",
           {{"cx", text(emu::fromPoints(onPage.width))}, {"cy", text(emu::fromPoints(onPage.height))}});
    append(anchor, "wp:effectExtent", {{"l", "0"}, {"t", "0"}, {"r", "0"}, {"b", "0"}});
    append(anchor, "wp:wrapNone");
    append(anchor, "wp:docPr", {{"id", text(id)}, {"name", name}});
    append(anchor, "wp:cNvGraphicFramePr");
    return anchor;
}

void appendTransform(pugi::xml_node properties, const DrawingRect& rect) {
    pugi::xml_node transform = append(properties, "a:xfrm");
    append(transform, "a:off",
           {{"x", text(emu::fromPoints(rect.left))}, {"y", text(emu::fromPoints(rect.top))}});
    append(transform, "a:ext",
           {{"cx", text(emu::fromPoints(rect.width))}, {"cy", text(emu::fromPoints(rect.height))}});
    append(append(properties, "a:prstGeom", {{"prst", "rect"}}), "a:avLst");
}

void appendSolid(pugi::xml_node parent, const char* colour) {
    append(append(parent, "a:solidFill"), "a:srgbClr", {{"val", colour}});
}

const char* textDirection(int orientation) {
    switch (orientation) {
    case 2:
        return "vert270";
    case 3:
        return "vert";
    default:
        return "horz";
    }
}

bool isCanvasItem(pugi::xml_node node) {
    return named(node, "wps:wsp") || named(node, "pic:pic") || named(node, "wpg:wgp");
}

std::vector<ShapeXml> vmlItems(pugi::xml_node group) {
    std::vector<ShapeXml> items;
    bool first = true;
    for (const pugi::xml_node child : group.children()) {
        if (drawingXml::prefix(child) != "v" || named(child, "v:shapetype")) {
            continue;
        }
        // Word's first shape in a VML canvas is the canvas's own background.
        const bool background = first && named(child, "v:shape") && !child.child("v:imagedata") &&
                                std::string_view(child.attribute("type").value()) == "#_x0000_t75";
        first = false;
        if (!background) {
            items.emplace_back(child);
        }
    }
    return items;
}

} // namespace

DrawingCanvas::DrawingCanvas(ShapeXml shape) {
    if (shape.type() == word::wd::msoCanvas) {
        shape_ = shape;
    }
}

DrawingCanvas DrawingCanvas::create(pugi::xml_node paragraph, const DrawingRect& onPage, unsigned id,
                                    std::string_view name, pugi::xml_node before) {
    if (!named(paragraph, "w:p")) {
        throw AutomationError("Die Zeichnungsfläche kann nur in einem Absatz verankert werden.");
    }
    pugi::xml_node run = before && before.parent() == paragraph ? paragraph.insert_child_before("w:r", before)
                                                                : paragraph.append_child("w:r");
    append(run, "w:rPr").append_child("w:noProof");
    pugi::xml_node holder = append(run, "mc:AlternateContent");
    DrawingNamespaces::declare(holder);
    pugi::xml_node drawing = append(append(holder, "mc:Choice", {{"Requires", "wpc"}}), "w:drawing");
    pugi::xml_node anchor = appendAnchor(drawing, onPage, id, name);
    pugi::xml_node graphic = append(anchor, "a:graphic", {{"xmlns:a", DrawingNamespaces::Main}});
    pugi::xml_node canvas =
        append(append(graphic, "a:graphicData", {{"uri", DrawingNamespaces::Canvas}}), "wpc:wpc");
    append(canvas, "wpc:bg");
    append(canvas, "wpc:whole");
    append(holder, "mc:Fallback");
    VmlFallback::regenerate(holder);
    return DrawingCanvas(ShapeXml(anchor));
}

DrawingCanvas DrawingCanvas::enclosing(pugi::xml_node node) {
    for (pugi::xml_node at = node; at; at = at.parent()) {
        if (named(at, "wpc:wpc")) {
            return DrawingCanvas(ShapeXml(at.parent().parent().parent()));
        }
        if (named(at, "v:group") && std::string_view(at.attribute("editas").value()) == "canvas") {
            return DrawingCanvas(ShapeXml(at));
        }
    }
    return {};
}

pugi::xml_node DrawingCanvas::content() const {
    const pugi::xml_node canvas = shape_.content();
    return named(canvas, "wpc:wpc") ? canvas : pugi::xml_node();
}

std::vector<ShapeXml> DrawingCanvas::items() const {
    if (shape_.isVml()) {
        return vmlItems(shape_.node());
    }
    std::vector<ShapeXml> items;
    for (const pugi::xml_node child : content().children()) {
        if (isCanvasItem(child)) {
            items.emplace_back(child);
        }
    }
    return items;
}

ShapeXml DrawingCanvas::addTextbox(int orientation, const DrawingRect& inCanvas, unsigned id,
                                   std::string_view name) {
    pugi::xml_node shape = append(checkedContent(), "wps:wsp");
    append(shape, "wps:cNvPr", {{"id", text(id)}, {"name", name}});
    append(shape, "wps:cNvSpPr", {{"txBox", "1"}});
    pugi::xml_node properties = append(shape, "wps:spPr");
    appendTransform(properties, inCanvas);
    appendSolid(properties, "FFFFFF");
    appendSolid(append(properties, "a:ln", {{"w", "9525"}}), "000000");
    append(append(shape, "wps:txbx"), "w:txbxContent").append_child("w:p");
    pugi::xml_node body = append(shape, "wps:bodyPr",
                                 {{"rot", "0"},
                                  {"vert", textDirection(orientation)},
                                  {"wrap", "square"},
                                  {"lIns", "91440"},
                                  {"tIns", "45720"},
                                  {"rIns", "91440"},
                                  {"bIns", "45720"},
                                  {"anchor", "t"},
                                  {"anchorCtr", "0"}});
    body.append_child("a:noAutofit");
    refreshFallback();
    return ShapeXml(shape);
}

ShapeXml DrawingCanvas::addPicture(std::string_view relationshipId, const DrawingRect& inCanvas, unsigned id,
                                   std::string_view name) {
    pugi::xml_node picture = append(checkedContent(), "pic:pic", {{"xmlns:pic", DrawingNamespaces::Picture}});
    pugi::xml_node names = append(picture, "pic:nvPicPr");
    append(names, "pic:cNvPr", {{"id", text(id)}, {"name", name}});
    append(append(names, "pic:cNvPicPr"), "a:picLocks", {{"noChangeAspect", "1"}});
    pugi::xml_node fill = append(picture, "pic:blipFill");
    append(fill, "a:blip", {{"r:embed", relationshipId}});
    append(fill, "a:stretch").append_child("a:fillRect");
    appendTransform(append(picture, "pic:spPr"), inCanvas);
    refreshFallback();
    return ShapeXml(picture);
}

pugi::xml_node DrawingCanvas::checkedContent() const {
    const pugi::xml_node canvas = content();
    if (!canvas) {
        throw AutomationError("In diese Zeichnungsfläche können keine Formen eingefügt werden.");
    }
    return canvas;
}

void DrawingCanvas::refreshFallback() const {
    VmlFallback::regenerateAround(shape_.node());
}

} // namespace wordbm::ooxml
