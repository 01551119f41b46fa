#include "engine/ooxml/VmlGeometry.h"

#include "engine/ooxml/DrawingXml.h"
#include "engine/ooxml/VmlStyle.h"

#include <string>
#include <utility>
#include <vector>

namespace wordbm::ooxml {

namespace {

using drawingXml::named;

// A VML shape's box in its parent's units: points at the top level, coordinates inside a group.
struct VmlBox {
    double left = 0.0;
    double top = 0.0;
    double width = 0.0;
    double height = 0.0;
};

double styleLength(const VmlStyle& style, std::string_view key, std::string_view alternative, bool inGroup) {
    std::string text = style.get(key);
    if (text.empty() && !alternative.empty()) {
        text = style.get(alternative);
    }
    const auto value = inGroup ? VmlStyle::number(text) : VmlStyle::points(text);
    // Word writes group coordinates without a unit, but a stray unit must not zero the box.
    return value ? *value : VmlStyle::points(text).value_or(VmlStyle::number(text).value_or(0.0));
}

VmlBox vmlBox(pugi::xml_node shape) {
    const bool inGroup = named(shape.parent(), "v:group");
    const VmlStyle style = VmlStyle::parse(shape.attribute("style").value());
    return {styleLength(style, "left", inGroup ? "" : "margin-left", inGroup),
            styleLength(style, "top", inGroup ? "" : "margin-top", inGroup),
            styleLength(style, "width", "", inGroup), styleLength(style, "height", "", inGroup)};
}

std::pair<double, double> pairAttribute(pugi::xml_node node, const char* name, double x, double y) {
    const std::string_view text = node.attribute(name).value();
    const auto comma = text.find(',');
    const auto first = VmlStyle::number(text.substr(0, comma));
    const auto second =
        comma == std::string_view::npos ? std::nullopt : VmlStyle::number(text.substr(comma + 1));
    return {first.value_or(x), second.value_or(y)};
}

// Points per unit of a group's coordinate space, and its origin.
struct VmlSpace {
    double scaleX = 1.0;
    double scaleY = 1.0;
    double originX = 0.0;
    double originY = 0.0;
};

VmlSpace groupSpace(pugi::xml_node group) {
    std::vector<pugi::xml_node> chain;
    for (pugi::xml_node node = group; named(node, "v:group"); node = node.parent()) {
        chain.push_back(node);
    }
    VmlSpace space;
    for (auto it = chain.rbegin(); it != chain.rend(); ++it) {
        const VmlBox box = vmlBox(*it);
        const auto [width, height] = pairAttribute(*it, "coordsize", 1000.0, 1000.0);
        const auto [originX, originY] = pairAttribute(*it, "coordorigin", 0.0, 0.0);
        space = {width > 0.0 ? box.width * space.scaleX / width : 0.0,
                 height > 0.0 ? box.height * space.scaleY / height : 0.0, originX, originY};
    }
    return space;
}

} // namespace

DrawingRect VmlGeometry::rect(pugi::xml_node shape) {
    const VmlBox box = vmlBox(shape);
    if (!named(shape.parent(), "v:group")) {
        return {static_cast<float>(box.left), static_cast<float>(box.top), static_cast<float>(box.width),
                static_cast<float>(box.height)};
    }
    const VmlSpace space = groupSpace(shape.parent());
    return {static_cast<float>((box.left - space.originX) * space.scaleX),
            static_cast<float>((box.top - space.originY) * space.scaleY),
            static_cast<float>(box.width * space.scaleX), static_cast<float>(box.height * space.scaleY)};
}

} // namespace wordbm::ooxml
