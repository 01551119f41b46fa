#include "engine/ooxml/InlinePicture.h"

#include "engine/ooxml/DrawingNamespaces.h"

namespace wordbm::ooxml {

namespace {

pugi::xml_node add(pugi::xml_node parent, const char* name) {
    return parent.append_child(name);
}

void set(pugi::xml_node node, const char* name, const std::string& value) {
    node.append_attribute(name) = value.c_str();
}

void extent(pugi::xml_node node, std::int64_t width, std::int64_t height) {
    set(node, "cx", std::to_string(width));
    set(node, "cy", std::to_string(height));
}

} // namespace

pugi::xml_node InlinePicture::build(pugi::xml_document& holder, const std::string& relationshipId,
                                    std::int64_t width, std::int64_t height, unsigned id,
                                    const std::string& name) {
    holder.reset();
    auto run = holder.append_child("w:r");
    auto frame = add(add(run, "w:drawing"), "wp:inline");
    for (const char* side : {"distT", "distB", "distL", "distR"}) {
        set(frame, side, "0");
    }
    extent(add(frame, "wp:extent"), width, height);
    auto properties = add(frame, "wp:docPr");
    set(properties, "id", std::to_string(id));
    set(properties, "name", name);
    auto locks = add(add(frame, "wp:cNvGraphicFramePr"), "a:graphicFrameLocks");
    set(locks, "xmlns:a", DrawingNamespaces::Main);
    set(locks, "noChangeAspect", "1");
    auto graphic = add(frame, "a:graphic");
    set(graphic, "xmlns:a", DrawingNamespaces::Main);
    auto data = add(graphic, "a:graphicData");
    set(data, "uri", DrawingNamespaces::Picture);
    auto picture = add(data, "pic:pic");
    set(picture, "xmlns:pic", DrawingNamespaces::Picture);
    auto nonVisual = add(picture, "pic:nvPicPr");
    auto pictureProperties = add(nonVisual, "pic:cNvPr");
    set(pictureProperties, "id", "0");
    set(pictureProperties, "name", name);
    add(nonVisual, "pic:cNvPicPr");
    auto fill = add(picture, "pic:blipFill");
    set(add(fill, "a:blip"), "r:embed", relationshipId);
    add(add(fill, "a:stretch"), "a:fillRect");
    auto shape = add(picture, "pic:spPr");
    auto transform = add(shape, "a:xfrm");
    auto offset = add(transform, "a:off");
    set(offset, "x", "0");
    set(offset, "y", "0");
    extent(add(transform, "a:ext"), width, height);
    auto geometry = add(shape, "a:prstGeom");
    set(geometry, "prst", "rect");
    add(geometry, "a:avLst");
    return run;
}

} // namespace wordbm::ooxml
