#include "engine/ooxml/VmlTextboxPictures.h"

#include "engine/ooxml/DrawingXml.h"
#include "engine/ooxml/VmlShapeWriter.h"

#include <cstdint>
#include <string>

namespace wordbm::ooxml {

namespace {

using drawingXml::integer;
using drawingXml::named;
using drawingXml::path;

// Word's inner margins of a text box, in EMU: 0.1 in at the sides, 0.05 in above and below.
constexpr std::int64_t DefaultSideInset = 91440;
constexpr std::int64_t DefaultEdgeInset = 45720;

bool invisible(pugi::xml_node node) {
    return named(node, "w:pPr") || named(node, "w:rPr") || named(node, "w:bookmarkStart") ||
           named(node, "w:bookmarkEnd") || named(node, "w:proofErr") ||
           (named(node, "w:t") && *node.child_value() == '\0');
}

// The inline picture that comes before any text of the box; null when text comes first.
pugi::xml_node leadingPicture(pugi::xml_node content) {
    for (const pugi::xml_node child : content.child("w:p").children()) {
        if (invisible(child)) {
            continue;
        }
        if (!named(child, "w:r")) {
            return {};
        }
        for (const pugi::xml_node item : child.children()) {
            if (invisible(item)) {
                continue;
            }
            const pugi::xml_node picture = path(item, {"wp:inline", "a:graphic", "a:graphicData", "pic:pic"});
            return named(item, "w:drawing") && picture ? item : pugi::xml_node();
        }
    }
    return {};
}

std::string units(std::int64_t emu) {
    return std::to_string(emu / VmlShapeWriter::EmuPerUnit);
}

} // namespace

bool VmlTextboxPictures::drawBeside(pugi::xml_node box, pugi::xml_node shape, const VmlStyle& placement) {
    const pugi::xml_node drawing = leadingPicture(path(box, {"v:textbox", "w:txbxContent"}));
    const auto left = VmlStyle::number(placement.get("left"));
    const auto top = VmlStyle::number(placement.get("top"));
    // A turned box would turn its picture too; such boxes keep it in their text.
    if (!drawing || !left || !top || placement.has("rotation")) {
        return false;
    }
    const pugi::xml_node body = shape.child("wps:bodyPr");
    const pugi::xml_node extent = path(drawing, {"wp:inline", "wp:extent"});
    const pugi::xml_node blip =
        path(drawing, {"wp:inline", "a:graphic", "a:graphicData", "pic:pic", "pic:blipFill", "a:blip"});
    VmlStyle style;
    style.set("position", "absolute")
        .set("left",
             VmlStyle::formatNumber(
                 *left + double(integer(body, "lIns", DefaultSideInset)) / VmlShapeWriter::EmuPerUnit, 0))
        .set("top",
             VmlStyle::formatNumber(
                 *top + double(integer(body, "tIns", DefaultEdgeInset)) / VmlShapeWriter::EmuPerUnit, 0))
        .set("width", units(integer(extent, "cx")))
        .set("height", units(integer(extent, "cy")));
    pugi::xml_node picture = box.parent().insert_child_after("v:shape", box);
    picture.append_attribute("type").set_value("#_x0000_t75");
    picture.append_attribute("style").set_value(style.str().c_str());
    pugi::xml_node imageData = picture.append_child("v:imagedata");
    imageData.append_attribute("r:id").set_value(blip.attribute("r:embed").value());
    imageData.append_attribute("o:title").set_value("");
    drawing.parent().remove_child(drawing);
    return true;
}

} // namespace wordbm::ooxml
