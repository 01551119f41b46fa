#include "engine/ooxml/ShapeXml.h"

#include "engine/ooxml/DrawingXml.h"
#include "engine/ooxml/Emu.h"
#include "engine/ooxml/VmlFallback.h"
#include "engine/ooxml/VmlGeometry.h"
#include "engine/ooxml/VmlStyle.h"
#include "engine/word/WordConstants.h"

#include <array>

namespace wordbm::ooxml {

namespace {

using drawingXml::named;
namespace wd = word::wd;

bool isFrame(pugi::xml_node node) {
    return named(node, "wp:anchor") || named(node, "wp:inline");
}

bool isVmlElement(pugi::xml_node node) {
    return drawingXml::prefix(node) == "v";
}

bool isFalse(std::string_view value) {
    return value == "f" || value == "false" || value == "0";
}

int drawingShapeType(pugi::xml_node shape) {
    if (drawingXml::path(shape, {"wps:cNvSpPr"}).attribute("txBox").as_bool()) {
        return wd::msoTextBox;
    }
    const pugi::xml_node geometry = drawingXml::path(shape, {"wps:spPr", "a:prstGeom"});
    if (std::string_view(geometry.attribute("prst").value()) == "line") {
        return ShapeXml::Line;
    }
    if (drawingXml::path(shape, {"wps:spPr", "a:custGeom"})) {
        return ShapeXml::Freeform;
    }
    return ShapeXml::AutoShape;
}

int vmlType(pugi::xml_node shape) {
    const std::string_view kind = drawingXml::localName(shape);
    if (kind == "group") {
        return std::string_view(shape.attribute("editas").value()) == "canvas" ? wd::msoCanvas : wd::msoGroup;
    }
    if (kind == "line") {
        return ShapeXml::Line;
    }
    if (kind == "polyline" || kind == "curve") {
        return ShapeXml::Freeform;
    }
    if (shape.child("v:imagedata")) {
        return wd::msoPicture;
    }
    if (std::string_view(shape.attribute("type").value()) == "#_x0000_t202" ||
        std::string_view(shape.attribute("o:spt").value()) == "202") {
        return wd::msoTextBox;
    }
    return ShapeXml::AutoShape;
}

DrawingRect transformRect(pugi::xml_node xfrm) {
    const pugi::xml_node offset = xfrm.child("a:off");
    const pugi::xml_node extent = xfrm.child("a:ext");
    return {emu::toPoints(drawingXml::integer(offset, "x")), emu::toPoints(drawingXml::integer(offset, "y")),
            emu::toPoints(drawingXml::integer(extent, "cx")),
            emu::toPoints(drawingXml::integer(extent, "cy"))};
}

std::string vmlRelative(pugi::xml_node shape, const char* key, bool horizontal) {
    const std::string value = VmlStyle::parse(shape.attribute("style").value()).get(key);
    if (value == "text") {
        return horizontal ? "column" : "paragraph";
    }
    if (value == "char") {
        return "character";
    }
    return value.empty() ? (horizontal ? "column" : "paragraph") : value;
}

constexpr std::array<const char*, 4> LineFills{"a:noFill", "a:solidFill", "a:gradFill", "a:pattFill"};

pugi::xml_node lineFill(pugi::xml_node line) {
    for (const char* fill : LineFills) {
        if (const pugi::xml_node found = line.child(fill)) {
            return found;
        }
    }
    return {};
}

// The outline a shape style gives when the shape itself says nothing.
bool styleDrawsLine(pugi::xml_node shape) {
    return drawingXml::integer(drawingXml::path(shape, {"wps:style", "a:lnRef"}), "idx") > 0;
}

pugi::xml_node insertLine(pugi::xml_node properties) {
    // a:ln comes after the geometry and fill and before effects, 3-D and extensions.
    static constexpr std::array<const char*, 5> After{"a:effectLst", "a:effectDag", "a:scene3d", "a:sp3d",
                                                      "a:extLst"};
    for (const pugi::xml_node child : properties.children()) {
        for (const char* name : After) {
            if (named(child, name)) {
                return properties.insert_child_before("a:ln", child);
            }
        }
    }
    return properties.append_child("a:ln");
}

pugi::xml_node vmlStrokeTarget(pugi::xml_node shape) {
    if (vmlType(shape) != wd::msoCanvas) {
        return shape;
    }
    // A VML canvas draws its border with the background shape that comes first in the group.
    const pugi::xml_node background = shape.child("v:shape");
    return background && !background.child("v:imagedata") ? background : shape;
}

bool vmlLineVisible(pugi::xml_node shape) {
    const pugi::xml_node target = vmlStrokeTarget(shape);
    if (const pugi::xml_attribute stroked = target.attribute("stroked")) {
        return !isFalse(stroked.value());
    }
    if (const pugi::xml_node stroke = target.child("v:stroke"); stroke.attribute("on")) {
        return !isFalse(stroke.attribute("on").value());
    }
    // Pictures and canvas backgrounds take the picture frame type, which draws no outline.
    return std::string_view(target.attribute("type").value()) != "#_x0000_t75" && !named(target, "v:group");
}

bool holdsCharacter(pugi::xml_node content) {
    static constexpr std::array<std::string_view, 9> Characters{
        "w:tab",           "w:br",        "w:cr", "w:sym", "w:drawing", "w:pict", "w:object",
        "w:noBreakHyphen", "w:softHyphen"};
    bool found = false;
    drawingXml::forEachElement(content, [&](pugi::xml_node node) {
        const std::string_view name = node.name();
        // w:tab also names tab stops in paragraph properties.
        if (name == "w:pPr" || name == "w:rPr") {
            return drawingXml::Visit::Skip;
        }
        for (const std::string_view character : Characters) {
            found = found || name == character;
        }
        found = found || (name == "w:t" && *node.child_value() != '\0');
        return found ? drawingXml::Visit::Stop : drawingXml::Visit::Enter;
    });
    return found;
}

bool onlyProperties(pugi::xml_node run) {
    for (const pugi::xml_node child : run.children()) {
        if (child.type() == pugi::node_element && !named(child, "w:rPr")) {
            return false;
        }
    }
    return true;
}

} // namespace

pugi::xml_node ShapeXml::content() const {
    if (!isFrame(node_)) {
        return node_;
    }
    for (const pugi::xml_node child : drawingXml::path(node_, {"a:graphic", "a:graphicData"}).children()) {
        if (child.type() == pugi::node_element) {
            return child;
        }
    }
    return {};
}

bool ShapeXml::isVml() const {
    return isVmlElement(node_);
}

pugi::xml_node ShapeXml::nameNode(bool create) const {
    pugi::xml_node shape = content();
    if (isFrame(node_)) {
        return node_.child("wp:docPr");
    }
    if (named(shape, "pic:pic")) {
        return drawingXml::path(shape, {"pic:nvPicPr", "pic:cNvPr"});
    }
    const char* name = named(shape, "wps:wsp")   ? "wps:cNvPr"
                       : named(shape, "wpg:wgp") ? "wpg:cNvPr"
                                                 : nullptr;
    if (!name) {
        return {};
    }
    pugi::xml_node found = shape.child(name);
    if (!found && create) {
        found = shape.prepend_child(name);
        found.append_attribute("id").set_value(0);
    }
    return found;
}

std::string ShapeXml::name() const {
    if (isVml()) {
        return node_.attribute("id").value();
    }
    return nameNode(false).attribute("name").value();
}

void ShapeXml::setName(std::string_view name) {
    const std::string text(name);
    if (isVml()) {
        drawingXml::setAttribute(node_, "id", text);
        return;
    }
    const pugi::xml_node target = nameNode(true);
    if (!target) {
        return;
    }
    drawingXml::setAttribute(target, "name", text);
    refreshFallback();
}

int ShapeXml::type() const {
    if (isVml()) {
        return vmlType(node_);
    }
    const pugi::xml_node shape = content();
    if (named(shape, "wpc:wpc")) {
        return wd::msoCanvas;
    }
    if (named(shape, "wpg:wgp")) {
        return wd::msoGroup;
    }
    if (named(shape, "pic:pic")) {
        return wd::msoPicture;
    }
    if (named(shape, "wps:wsp")) {
        return drawingShapeType(shape);
    }
    const std::string_view uri =
        drawingXml::path(node_, {"a:graphic", "a:graphicData"}).attribute("uri").value();
    if (uri.ends_with("/chart") || uri.ends_with("/chartex")) {
        return Chart;
    }
    return uri.ends_with("/diagram") ? SmartArt : AutoShape;
}

pugi::xml_node ShapeXml::properties() const {
    const pugi::xml_node shape = content();
    if (named(shape, "wps:wsp")) {
        return shape.child("wps:spPr");
    }
    if (named(shape, "pic:pic")) {
        return shape.child("pic:spPr");
    }
    if (named(shape, "wpg:wgp")) {
        return shape.child("wpg:grpSpPr");
    }
    return {};
}

DrawingRect ShapeXml::geometry() const {
    if (isVml()) {
        return VmlGeometry::rect(node_);
    }
    if (!isFrame(node_)) {
        return transformRect(properties().child("a:xfrm"));
    }
    const pugi::xml_node extent = node_.child("wp:extent");
    DrawingRect rect{0.0F, 0.0F, emu::toPoints(drawingXml::integer(extent, "cx")),
                     emu::toPoints(drawingXml::integer(extent, "cy"))};
    if (named(node_, "wp:anchor")) {
        rect.left = emu::toPoints(
            drawingXml::integer(drawingXml::path(node_, {"wp:positionH", "wp:posOffset"}).child_value()));
        rect.top = emu::toPoints(
            drawingXml::integer(drawingXml::path(node_, {"wp:positionV", "wp:posOffset"}).child_value()));
    }
    return rect;
}

bool ShapeXml::isInline() const {
    if (isVml()) {
        return !named(node_.parent(), "v:group") &&
               VmlStyle::parse(node_.attribute("style").value()).get("position") != "absolute";
    }
    return named(node_, "wp:inline");
}

std::string ShapeXml::horizontalRelativeTo() const {
    if (isVml()) {
        return isInline() || named(node_.parent(), "v:group")
                   ? std::string()
                   : vmlRelative(node_, "mso-position-horizontal-relative", true);
    }
    return node_.child("wp:positionH").attribute("relativeFrom").value();
}

std::string ShapeXml::verticalRelativeTo() const {
    if (isVml()) {
        return isInline() || named(node_.parent(), "v:group")
                   ? std::string()
                   : vmlRelative(node_, "mso-position-vertical-relative", false);
    }
    return node_.child("wp:positionV").attribute("relativeFrom").value();
}

bool ShapeXml::lineVisible() const {
    if (isVml()) {
        return vmlLineVisible(node_);
    }
    const pugi::xml_node shape = content();
    const pugi::xml_node line =
        named(shape, "wpc:wpc") ? drawingXml::path(shape, {"wpc:whole", "a:ln"}) : properties().child("a:ln");
    const pugi::xml_node fill = lineFill(line);
    return fill ? !named(fill, "a:noFill") : styleDrawsLine(shape);
}

void ShapeXml::setLineVisible(bool visible) {
    if (isVml()) {
        drawingXml::setAttribute(vmlStrokeTarget(node_), "stroked", visible ? "t" : "f");
        return;
    }
    pugi::xml_node shape = content();
    pugi::xml_node holder = properties();
    if (named(shape, "wpc:wpc")) {
        holder = shape.child("wpc:whole");
        if (!holder) {
            holder = shape.child("wpc:bg") ? shape.insert_child_after("wpc:whole", shape.child("wpc:bg"))
                                           : shape.prepend_child("wpc:whole");
        }
    }
    if (!holder || named(shape, "wpg:wgp")) {
        return;
    }
    pugi::xml_node line = holder.child("a:ln");
    if (!line) {
        line = named(holder, "wpc:whole") ? holder.prepend_child("a:ln") : insertLine(holder);
    }
    const pugi::xml_node fill = lineFill(line);
    if (visible && fill && !named(fill, "a:noFill")) {
        return;
    }
    while (const pugi::xml_node old = lineFill(line)) {
        line.remove_child(old);
    }
    if (visible) {
        if (!line.attribute("w")) {
            line.append_attribute("w").set_value(9525);
        }
        drawingXml::append(line.prepend_child("a:solidFill"), "a:srgbClr", {{"val", "000000"}});
    } else {
        line.prepend_child("a:noFill");
    }
    refreshFallback();
}

pugi::xml_node ShapeXml::textContent() const {
    if (isVml()) {
        return drawingXml::path(node_, {"v:textbox", "w:txbxContent"});
    }
    return drawingXml::path(content(), {"wps:txbx", "w:txbxContent"});
}

bool ShapeXml::hasText() const {
    const pugi::xml_node text = textContent();
    return text && holdsCharacter(text);
}

void ShapeXml::remove() {
    if (!node_) {
        return;
    }
    pugi::xml_node holder = node_;
    if (isFrame(node_)) {
        holder = node_.parent();
        if (named(holder.parent(), "mc:Choice")) {
            holder = holder.parent().parent();
        }
    }
    pugi::xml_node parent = holder.parent();
    parent.remove_child(holder);
    // A w:pict keeps its shape types: Word defines each once per part, for the shapes that follow.
    if (named(parent, "w:pict") &&
        !parent.find_child([](pugi::xml_node child) { return child.type() == pugi::node_element; })) {
        holder = parent;
        parent = parent.parent();
        parent.remove_child(holder);
    }
    if (named(parent, "w:r") && onlyProperties(parent)) {
        holder = parent;
        parent = parent.parent();
        parent.remove_child(holder);
    }
    node_ = {};
    VmlFallback::regenerateAround(parent);
}

pugi::xml_node ShapeXml::alternateContent() const {
    return drawingXml::alternateContentAround(node_);
}

void ShapeXml::refreshFallback() const {
    VmlFallback::regenerateAround(node_);
}

} // namespace wordbm::ooxml
