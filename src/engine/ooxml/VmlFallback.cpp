#include "engine/ooxml/VmlFallback.h"

#include "engine/ooxml/DrawingNamespaces.h"
#include "engine/ooxml/DrawingXml.h"
#include "engine/ooxml/Emu.h"
#include "engine/ooxml/ShapeXml.h"
#include "engine/ooxml/VmlShapeWriter.h"

#include <array>
#include <string_view>
#include <utility>
#include <vector>

namespace wordbm::ooxml {

namespace {

using drawingXml::append;
using drawingXml::integer;
using drawingXml::named;

using NamePair = std::pair<std::string_view, std::string_view>;

// DrawingML's relativeFrom names and VML's mso-position-*-relative ones.
constexpr std::array<NamePair, 8> HorizontalRelatives{{
    {"page", "page"},
    {"margin", "margin"},
    {"column", "text"},
    {"character", "char"},
    {"leftMargin", "left-margin-area"},
    {"rightMargin", "right-margin-area"},
    {"insideMargin", "inner-margin-area"},
    {"outsideMargin", "outer-margin-area"},
}};

constexpr std::array<NamePair, 8> VerticalRelatives{{
    {"page", "page"},
    {"margin", "margin"},
    {"paragraph", "text"},
    {"line", "line"},
    {"topMargin", "top-margin-area"},
    {"bottomMargin", "bottom-margin-area"},
    {"insideMargin", "inner-margin-area"},
    {"outsideMargin", "outer-margin-area"},
}};

constexpr std::array<NamePair, 4> WrapTypes{{
    {"wp:wrapSquare", "square"},
    {"wp:wrapTight", "tight"},
    {"wp:wrapThrough", "through"},
    {"wp:wrapTopAndBottom", "topAndBottom"},
}};

template <std::size_t Size>
std::string_view lookUp(const std::array<NamePair, Size>& table, std::string_view key,
                        std::string_view fallback) {
    for (const auto& [from, to] : table) {
        if (from == key) {
            return to;
        }
    }
    return fallback;
}

std::string pointsText(std::int64_t emu) {
    return VmlStyle::formatPoints(static_cast<double>(emu) / emu::PerPoint);
}

bool drawable(pugi::xml_node content) {
    return named(content, "wpc:wpc") || named(content, "wpg:wgp") || named(content, "wps:wsp") ||
           named(content, "pic:pic");
}

pugi::xml_node frameIn(pugi::xml_node drawing) {
    const pugi::xml_node anchor = drawing.child("wp:anchor");
    return anchor ? anchor : drawing.child("wp:inline");
}

// A w:drawing holding a canvas without a fallback, moved into an mc:AlternateContent of its own.
pugi::xml_node wrapInAlternateContent(pugi::xml_node drawing) {
    pugi::xml_node holder = drawing.parent().insert_child_before("mc:AlternateContent", drawing);
    pugi::xml_node choice = append(holder, "mc:Choice", {{"Requires", "wpc"}});
    choice.append_move(drawing);
    append(holder, "mc:Fallback");
    return holder;
}

// An aligned drawing (wp:align) has no offset; its alignment goes into the style instead.
std::int64_t offset(pugi::xml_node position, std::int64_t simpleOffset, bool simple) {
    if (simple) {
        return simpleOffset;
    }
    return position.child("wp:align") ? 0 : integer(position.child("wp:posOffset").child_value());
}

void addAlignment(VmlStyle& style, pugi::xml_node position, bool simple, const char* key) {
    if (const pugi::xml_node align = position.child("wp:align"); align && !simple) {
        style.set(key, align.child_value());
    }
}

} // namespace

bool VmlFallback::regenerate(pugi::xml_node alternateContent) {
    if (!named(alternateContent, "mc:AlternateContent")) {
        return false;
    }
    const pugi::xml_node frame = frameIn(drawingXml::path(alternateContent, {"mc:Choice", "w:drawing"}));
    const ShapeXml shape(frame);
    if (!frame || !drawable(shape.content())) {
        return false;
    }
    DrawingNamespaces::declare(alternateContent);
    if (const pugi::xml_node old = alternateContent.child("mc:Fallback")) {
        alternateContent.remove_child(old);
    }
    pugi::xml_node picture = alternateContent.append_child("mc:Fallback").append_child("w:pict");
    VmlShapeWriter writer(alternateContent);
    const pugi::xml_node element = writer.write(picture, shape.content(), placement(frame), shape.name());
    if (element) {
        writeWrap(element, frame);
        writer.writeShapeTypes(named(element, "v:group") ? element : picture);
    }
    return true;
}

void VmlFallback::regenerateAround(pugi::xml_node node) {
    for (pugi::xml_node holder = drawingXml::alternateContentAround(node); holder;
         holder = drawingXml::alternateContentAround(holder.parent())) {
        regenerate(holder);
    }
}

std::size_t VmlFallback::regenerateCanvases(pugi::xml_node scope) {
    std::vector<pugi::xml_node> canvases;
    drawingXml::forEachElement(scope, [&](pugi::xml_node node) {
        if (named(node, "mc:Fallback")) {
            return drawingXml::Visit::Skip;
        }
        if (named(node, "wpc:wpc")) {
            canvases.push_back(node);
        }
        return drawingXml::Visit::Enter;
    });
    // Innermost last in document order: rebuilding from the back lets an outer fallback copy the
    // inner one's new fallback.
    std::size_t count = 0;
    for (auto it = canvases.rbegin(); it != canvases.rend(); ++it) {
        const pugi::xml_node drawing = drawingXml::ancestor(*it, "w:drawing");
        const bool storedTwice = named(drawing.parent(), "mc:Choice");
        const pugi::xml_node holder =
            storedTwice ? drawing.parent().parent() : wrapInAlternateContent(drawing);
        count += regenerate(holder) ? 1 : 0;
    }
    return count;
}

VmlStyle VmlFallback::placement(pugi::xml_node frame) {
    const pugi::xml_node extent = frame.child("wp:extent");
    const std::string width = pointsText(integer(extent, "cx"));
    const std::string height = pointsText(integer(extent, "cy"));
    VmlStyle style;
    if (named(frame, "wp:inline")) {
        style.set("width", width).set("height", height);
        style.set("mso-position-horizontal-relative", "char").set("mso-position-vertical-relative", "line");
        return style;
    }
    const bool simple = frame.attribute("simplePos").as_bool();
    const pugi::xml_node simplePosition = frame.child("wp:simplePos");
    const pugi::xml_node horizontal = frame.child("wp:positionH");
    const pugi::xml_node vertical = frame.child("wp:positionV");
    style.set("position", "absolute");
    style.set("margin-left", pointsText(offset(horizontal, integer(simplePosition, "x"), simple)));
    style.set("margin-top", pointsText(offset(vertical, integer(simplePosition, "y"), simple)));
    style.set("width", width).set("height", height);
    const std::int64_t layer = integer(frame, "relativeHeight");
    style.set("z-index", std::to_string(frame.attribute("behindDoc").as_bool() ? -layer : layer));
    style.set("mso-wrap-distance-left", pointsText(integer(frame, "distL")));
    style.set("mso-wrap-distance-top", pointsText(integer(frame, "distT")));
    style.set("mso-wrap-distance-right", pointsText(integer(frame, "distR")));
    style.set("mso-wrap-distance-bottom", pointsText(integer(frame, "distB")));
    addAlignment(style, horizontal, simple, "mso-position-horizontal");
    style.set("mso-position-horizontal-relative",
              std::string(simple ? "page"
                                 : lookUp(HorizontalRelatives, horizontal.attribute("relativeFrom").value(),
                                          "text")));
    addAlignment(style, vertical, simple, "mso-position-vertical");
    style.set(
        "mso-position-vertical-relative",
        std::string(simple ? "page"
                           : lookUp(VerticalRelatives, vertical.attribute("relativeFrom").value(), "text")));
    return style;
}

void VmlFallback::writeWrap(pugi::xml_node element, pugi::xml_node frame) {
    if (named(frame, "wp:inline")) {
        element.append_child("w10:anchorlock");
        return;
    }
    std::string_view type;
    for (const pugi::xml_node child : frame.children()) {
        type = type.empty() ? lookUp(WrapTypes, child.name(), "") : type;
    }
    const VmlStyle style = VmlStyle::parse(element.attribute("style").value());
    const std::string across = style.get("mso-position-horizontal-relative");
    const std::string down = style.get("mso-position-vertical-relative");
    const auto fixed = [](const std::string& relative) { return relative == "page" || relative == "margin"; };
    if (type.empty() && !fixed(across) && !fixed(down)) {
        return;
    }
    pugi::xml_node wrap = element.append_child("w10:wrap");
    if (!type.empty()) {
        wrap.append_attribute("type").set_value(std::string(type).c_str());
    }
    if (fixed(across)) {
        wrap.append_attribute("anchorx").set_value(across.c_str());
    }
    if (fixed(down)) {
        wrap.append_attribute("anchory").set_value(down.c_str());
    }
}

} // namespace wordbm::ooxml
