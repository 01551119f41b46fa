#include "engine/ooxml/VmlShapeWriter.h"

#include "engine/ooxml/DrawingColour.h"
#include "engine/ooxml/DrawingNamespaces.h"
#include "engine/ooxml/DrawingXml.h"
#include "engine/ooxml/Emu.h"
#include "engine/ooxml/ShapeXml.h"
#include "engine/ooxml/VmlPath.h"
#include "engine/ooxml/VmlTextboxPictures.h"

#include <array>
#include <cmath>
#include <optional>
#include <string_view>

namespace wordbm::ooxml {

namespace {

using drawingXml::append;
using drawingXml::integer;
using drawingXml::named;
using drawingXml::path;
using drawingXml::setAttribute;

// Deeper groups are left out of the fallback: a hostile part must not exhaust the stack.
constexpr int MaxGroupDepth = 32;
constexpr std::string_view IdPrefix = "_x0000_s";
constexpr double AngleUnit = 60000.0;
// DrawingML text box margins when bodyPr does not give them: 0.1 in and 0.05 in.
constexpr std::int64_t DefaultSideInset = 91440;
constexpr std::int64_t DefaultEdgeInset = 45720;

std::string units(std::int64_t emu) {
    return std::to_string(std::llround(static_cast<double>(emu) / VmlShapeWriter::EmuPerUnit));
}

std::string pointsText(std::int64_t emu) {
    return VmlStyle::formatPoints(static_cast<double>(emu) / emu::PerPoint);
}

std::int64_t highestShapeId(pugi::xml_node anywhere) {
    std::int64_t highest = 1024;
    drawingXml::forEachElement(anywhere.root(), [&](pugi::xml_node node) {
        for (const char* attribute : {"o:spid", "id"}) {
            const std::string_view value = node.attribute(attribute).value();
            if (value.starts_with(IdPrefix)) {
                highest = std::max(highest, integer(value.substr(IdPrefix.size())));
            }
        }
        return drawingXml::Visit::Enter;
    });
    return highest;
}

pugi::xml_node transformOf(pugi::xml_node shape) {
    if (named(shape, "wpg:wgp")) {
        return path(shape, {"wpg:grpSpPr", "a:xfrm"});
    }
    return path(shape, {named(shape, "pic:pic") ? "pic:spPr" : "wps:spPr", "a:xfrm"});
}

void addRotation(VmlStyle& style, pugi::xml_node transform) {
    if (const std::int64_t rotation = integer(transform, "rot"); rotation != 0) {
        style.set("rotation", VmlStyle::formatNumber(static_cast<double>(rotation) / AngleUnit, 3));
    }
    const bool flipX = transform.attribute("flipH").as_bool();
    const bool flipY = transform.attribute("flipV").as_bool();
    if (flipX || flipY) {
        style.set("flip", flipX && flipY ? "x y" : flipX ? "x" : "y");
    }
}

VmlStyle itemPlacement(pugi::xml_node transform) {
    const pugi::xml_node offset = transform.child("a:off");
    const pugi::xml_node extent = transform.child("a:ext");
    VmlStyle style;
    style.set("position", "absolute")
        .set("left", units(integer(offset, "x")))
        .set("top", units(integer(offset, "y")))
        .set("width", units(integer(extent, "cx")))
        .set("height", units(integer(extent, "cy")));
    return style;
}

bool styleRefers(pugi::xml_node shape, const char* reference) {
    return integer(path(shape, {"wps:style", reference}), "idx") > 0;
}

void writeFill(pugi::xml_node element, pugi::xml_node properties, pugi::xml_node shape) {
    if (properties.child("a:noFill")) {
        setAttribute(element, "filled", "f");
    } else if (const pugi::xml_node solid = properties.child("a:solidFill")) {
        if (const auto value = DrawingColour::of(solid)) {
            setAttribute(element, "fillcolor", *value);
        }
    } else if (properties.child("a:gradFill") || properties.child("a:pattFill") ||
               properties.child("a:blipFill") || properties.child("a:grpFill")) {
        // Left to VML's default fill: the fallback does not draw gradients, patterns or pictures.
    } else if (!styleRefers(shape, "a:fillRef")) {
        setAttribute(element, "filled", "f");
    } else if (const auto value = DrawingColour::of(path(shape, {"wps:style", "a:fillRef"}))) {
        setAttribute(element, "fillcolor", *value);
    }
}

// `drawnByDefault`: whether the element's VML type draws an outline unless told otherwise.
void writeStroke(pugi::xml_node element, pugi::xml_node line, pugi::xml_node shape, bool drawnByDefault) {
    pugi::xml_node fill;
    for (const char* name : {"a:noFill", "a:solidFill", "a:gradFill", "a:pattFill"}) {
        fill = fill ? fill : line.child(name);
    }
    const bool visible = fill ? !named(fill, "a:noFill") : styleRefers(shape, "a:lnRef");
    if (!visible || !drawnByDefault) {
        setAttribute(element, "stroked", visible ? "t" : "f");
    }
    if (!visible) {
        return;
    }
    const auto styleColour = DrawingColour::of(path(shape, {"wps:style", "a:lnRef"}));
    if (const auto value = named(fill, "a:solidFill") ? DrawingColour::of(fill) : styleColour) {
        setAttribute(element, "strokecolor", *value);
    }
    if (line.attribute("w")) {
        setAttribute(element, "strokeweight", pointsText(integer(line, "w")));
    } else if (const std::int64_t style = integer(path(shape, {"wps:style", "a:lnRef"}), "idx"); style > 0) {
        // The default theme's line widths: 0.5, 1 and 1.5 pt.
        setAttribute(element, "strokeweight", pointsText(std::min<std::int64_t>(style, 3) * 6350));
    }
}

void writeCrop(pugi::xml_node imageData, pugi::xml_node sourceRect) {
    // a:srcRect counts in thousandths of a percent, VML crops in 65536ths ("f").
    static constexpr std::array<std::pair<const char*, const char*>, 4> Sides{
        {{"t", "croptop"}, {"b", "cropbottom"}, {"l", "cropleft"}, {"r", "cropright"}}};
    for (const auto& [side, attribute] : Sides) {
        if (const std::int64_t value = integer(sourceRect, side); value != 0) {
            setAttribute(imageData, attribute,
                         std::to_string(std::llround(static_cast<double>(value) * 65536.0 / 100000.0)) + "f");
        }
    }
}

void writePictureType(pugi::xml_node container) {
    pugi::xml_node type = append(container, "v:shapetype",
                                 {{"id", "_x0000_t75"},
                                  {"coordsize", "21600,21600"},
                                  {"o:spt", "75"},
                                  {"o:preferrelative", "t"},
                                  {"path", "m@4@5l@4@11@9@11@9@5xe"},
                                  {"filled", "f"},
                                  {"stroked", "f"}});
    append(type, "v:stroke", {{"joinstyle", "miter"}});
    pugi::xml_node formulas = type.append_child("v:formulas");
    for (const char* formula :
         {"if lineDrawn pixelLineWidth 0", "sum @0 1 0", "sum 0 0 @1", "prod @2 1 2",
          "prod @3 21600 pixelWidth", "prod @3 21600 pixelHeight", "sum @0 0 1", "prod @6 1 2",
          "prod @7 21600 pixelWidth", "sum @8 21600 0", "prod @7 21600 pixelHeight", "sum @10 21600 0"}) {
        append(formulas, "v:f", {{"eqn", formula}});
    }
    append(type, "v:path", {{"o:extrusionok", "f"}, {"gradientshapeok", "t"}, {"o:connecttype", "rect"}});
    append(type, "o:lock", {{"v:ext", "edit"}, {"aspectratio", "t"}});
}

void writeTextboxType(pugi::xml_node container) {
    pugi::xml_node type = append(container, "v:shapetype",
                                 {{"id", "_x0000_t202"},
                                  {"coordsize", "21600,21600"},
                                  {"o:spt", "202"},
                                  {"path", "m,l,21600r21600,l21600,xe"}});
    append(type, "v:stroke", {{"joinstyle", "miter"}});
    append(type, "v:path", {{"gradientshapeok", "t"}, {"o:connecttype", "rect"}});
}

std::string inset(pugi::xml_node body) {
    return pointsText(integer(body, "lIns", DefaultSideInset)) + "," +
           pointsText(integer(body, "tIns", DefaultEdgeInset)) + "," +
           pointsText(integer(body, "rIns", DefaultSideInset)) + "," +
           pointsText(integer(body, "bIns", DefaultEdgeInset));
}

std::string textAnchor(std::string_view anchor) {
    if (anchor == "ctr") {
        return "middle";
    }
    return anchor == "b" ? "bottom" : "top";
}

bool isItem(pugi::xml_node node) {
    return named(node, "wps:wsp") || named(node, "pic:pic") || named(node, "wpg:wgp");
}

} // namespace

VmlShapeWriter::VmlShapeWriter(pugi::xml_node scope) : scope_(scope), nextId_(highestShapeId(scope) + 1) {}

pugi::xml_node VmlShapeWriter::write(pugi::xml_node parent, pugi::xml_node shape, VmlStyle placement,
                                     const std::string& name) {
    if (named(shape, "wpc:wpc")) {
        return writeCanvas(parent, shape, placement, name);
    }
    if (depth_ > MaxGroupDepth) {
        return {};
    }
    addRotation(placement, transformOf(shape));
    if (named(shape, "wpg:wgp")) {
        return writeGroup(parent, shape, placement, name);
    }
    if (named(shape, "wps:wsp")) {
        return writeShape(parent, shape, placement, name);
    }
    if (named(shape, "pic:pic")) {
        return writePicture(parent, shape, placement, name);
    }
    return {};
}

void VmlShapeWriter::writeShapeTypes(pugi::xml_node container) const {
    // Written into every fallback rather than once per part as Word does: a fallback is rebuilt or
    // removed on its own, and must not take away a definition that another one relies on.
    pugi::xml_document types;
    if (usesTextboxType_) {
        writeTextboxType(types);
    }
    if (usesPictureType_) {
        writePictureType(types);
    }
    for (const pugi::xml_node type : types.children()) {
        container.prepend_copy(type);
    }
}

pugi::xml_node VmlShapeWriter::writeCanvas(pugi::xml_node parent, pugi::xml_node canvas,
                                           const VmlStyle& placement, const std::string& name) {
    // A canvas has no transform: its size is the drawing's extent.
    const pugi::xml_node extent = canvas.parent().parent().parent().child("wp:extent");
    const std::string width = units(integer(extent, "cx"));
    const std::string height = units(integer(extent, "cy"));
    pugi::xml_node group = startShape(parent, "v:group", name);
    group.append_attribute("editas").set_value("canvas");
    group.append_attribute("style").set_value(placement.str().c_str());
    group.append_attribute("coordsize").set_value((width + "," + height).c_str());

    // The canvas's own background and border, as Word draws them: a picture-type shape over the
    // whole canvas.
    pugi::xml_node background = startShape(group, "v:shape", "");
    background.append_attribute("type").set_value("#_x0000_t75");
    VmlStyle whole;
    whole.set("position", "absolute")
        .set("left", "0")
        .set("top", "0")
        .set("width", width)
        .set("height", height);
    background.append_attribute("style").set_value(whole.str().c_str());
    usesPictureType_ = true;
    if (const auto fill = DrawingColour::of(path(canvas, {"wpc:bg", "a:solidFill"}))) {
        setAttribute(background, "filled", "t");
        setAttribute(background, "fillcolor", *fill);
    }
    writeStroke(background, path(canvas, {"wpc:whole", "a:ln"}), {}, false);
    append(background, "v:fill", {{"o:detectmouseclick", "t"}});
    append(background, "v:path", {{"o:connecttype", "none"}});
    writeItems(group, canvas);
    return group;
}

pugi::xml_node VmlShapeWriter::writeGroup(pugi::xml_node parent, pugi::xml_node group,
                                          const VmlStyle& placement, const std::string& name) {
    const pugi::xml_node transform = transformOf(group);
    const pugi::xml_node childOffset = transform.child("a:chOff");
    pugi::xml_node childExtent = transform.child("a:chExt");
    childExtent = childExtent ? childExtent : transform.child("a:ext");
    pugi::xml_node element = startShape(parent, "v:group", name);
    element.append_attribute("style").set_value(placement.str().c_str());
    // VML divides by the coordinate size: an empty group still needs one unit.
    const std::int64_t width = std::max<std::int64_t>(integer(childExtent, "cx"), VmlShapeWriter::EmuPerUnit);
    const std::int64_t height =
        std::max<std::int64_t>(integer(childExtent, "cy"), VmlShapeWriter::EmuPerUnit);
    element.append_attribute("coordorigin")
        .set_value((units(integer(childOffset, "x")) + "," + units(integer(childOffset, "y"))).c_str());
    element.append_attribute("coordsize").set_value((units(width) + "," + units(height)).c_str());
    writeItems(element, group);
    return element;
}

pugi::xml_node VmlShapeWriter::writeShape(pugi::xml_node parent, pugi::xml_node shape, VmlStyle placement,
                                          const std::string& name) {
    const pugi::xml_node properties = shape.child("wps:spPr");
    const pugi::xml_node extent = path(properties, {"a:xfrm", "a:ext"});
    const std::string_view preset = path(properties, {"a:prstGeom"}).attribute("prst").value();
    const bool isLine = preset == "line" || preset == "straightConnector1";
    std::optional<std::string> outline;
    if (const pugi::xml_node custom = properties.child("a:custGeom")) {
        outline = VmlPath::fromCustomGeometry(custom, integer(extent, "cx"), integer(extent, "cy"));
    } else if (isLine) {
        // From corner to corner; the flips in the style turn it the right way.
        outline = "m,l21600,21600e";
    }
    const bool textbox = static_cast<bool>(shape.child("wps:txbx"));
    const bool textboxType =
        textbox && !outline && preset == "rect" && path(shape, {"wps:cNvSpPr"}).attribute("txBox").as_bool();
    const char* element = outline || textboxType  ? "v:shape"
                          : preset == "ellipse"   ? "v:oval"
                          : preset == "roundRect" ? "v:roundrect"
                                                  : "v:rect";
    pugi::xml_node node = startShape(parent, element, name);
    if (textboxType) {
        node.append_attribute("type").set_value("#_x0000_t202");
        usesTextboxType_ = true;
    }
    pugi::xml_attribute style = node.append_attribute("style");
    if (outline) {
        node.append_attribute("coordsize").set_value("21600,21600");
        node.append_attribute("path").set_value(outline->c_str());
    }
    if (isLine) {
        setAttribute(node, "filled", "f");
    } else {
        writeFill(node, properties, shape);
    }
    writeStroke(node, properties.child("a:ln"), shape, true);
    if (textbox) {
        writeTextbox(node, shape, placement);
        if (depth_ > 0 && VmlTextboxPictures::drawBeside(node, shape, placement)) {
            usesPictureType_ = true;
        }
    }
    style.set_value(placement.str().c_str());
    return node;
}

void VmlShapeWriter::writeTextbox(pugi::xml_node element, pugi::xml_node shape, VmlStyle& placement) {
    const pugi::xml_node body = shape.child("wps:bodyPr");
    placement.set("v-text-anchor", textAnchor(body.attribute("anchor").value()));
    if (body.child("a:spAutoFit")) {
        placement.set("mso-fit-shape-to-text", "t");
    }
    if (std::string_view(body.attribute("wrap").value()) == "none") {
        placement.set("mso-wrap-style", "none");
    }
    pugi::xml_node textbox = append(element, "v:textbox", {{"inset", inset(body)}});
    const std::string_view direction = body.attribute("vert").value();
    if (direction == "vert270") {
        textbox.append_attribute("style").set_value("layout-flow:vertical;mso-layout-flow-alt:bottom-to-top");
    } else if (direction == "vert" || direction == "eaVert" || direction == "wordArtVert") {
        textbox.append_attribute("style").set_value("layout-flow:vertical");
    }
    const pugi::xml_node source = path(shape, {"wps:txbx", "w:txbxContent"});
    pugi::xml_node copy = textbox.append_copy(source);
    DrawingNamespaces::carry(source, scope_, copy);
}

pugi::xml_node VmlShapeWriter::writePicture(pugi::xml_node parent, pugi::xml_node picture,
                                            const VmlStyle& placement, const std::string& name) {
    pugi::xml_node node = startShape(parent, "v:shape", name);
    node.append_attribute("type").set_value("#_x0000_t75");
    node.append_attribute("style").set_value(placement.str().c_str());
    usesPictureType_ = true;
    writeStroke(node, path(picture, {"pic:spPr", "a:ln"}), picture, false);
    const pugi::xml_node blip = path(picture, {"pic:blipFill", "a:blip"});
    const pugi::xml_attribute embedded = blip.attribute("r:embed");
    const char* relationship = embedded ? embedded.value() : blip.attribute("r:link").value();
    pugi::xml_node imageData = append(node, "v:imagedata", {{"r:id", relationship}, {"o:title", ""}});
    writeCrop(imageData, path(picture, {"pic:blipFill", "a:srcRect"}));
    return node;
}

void VmlShapeWriter::writeItems(pugi::xml_node group, pugi::xml_node source) {
    ++depth_;
    for (const pugi::xml_node child : source.children()) {
        if (isItem(child)) {
            write(group, child, itemPlacement(transformOf(child)), ShapeXml(child).name());
        }
    }
    --depth_;
}

pugi::xml_node VmlShapeWriter::startShape(pugi::xml_node parent, const char* element,
                                          const std::string& name) {
    pugi::xml_node node = parent.append_child(element);
    if (name.empty()) {
        node.append_attribute("id").set_value(nextId().c_str());
    } else {
        node.append_attribute("id").set_value(name.c_str());
        node.append_attribute("o:spid").set_value(nextId().c_str());
    }
    return node;
}

std::string VmlShapeWriter::nextId() {
    return std::string(IdPrefix) + std::to_string(nextId_++);
}

} // namespace wordbm::ooxml
