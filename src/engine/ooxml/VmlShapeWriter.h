#pragma once

#include "engine/ooxml/VmlStyle.h"

#include <cstdint>
#include <pugixml.hpp>
#include <string>

namespace wordbm::ooxml {

// Writes DrawingML shapes (canvas, group, shape or text box, picture) as the VML that Word puts
// into a fallback. Inside canvases and groups, coordinates are EMU / 100, as Word writes them.
class VmlShapeWriter {
public:
    static constexpr std::int64_t EmuPerUnit = 100;

    // `scope` is the mc:AlternateContent being rebuilt: copied text box content keeps the namespace
    // declarations made inside it. Shape ids continue after the highest one in the part.
    explicit VmlShapeWriter(pugi::xml_node scope);

    // Appends `shape` (wpc:wpc, wpg:wgp, wps:wsp or pic:pic) to `parent`, placed by `placement`;
    // rotation and flips are added from the shape's own transform. Null when it has no VML form.
    pugi::xml_node write(pugi::xml_node parent, pugi::xml_node shape, VmlStyle placement,
                         const std::string& name);

    // Puts the definitions of the shape types used so far at the start of `container`.
    void writeShapeTypes(pugi::xml_node container) const;

private:
    pugi::xml_node writeCanvas(pugi::xml_node parent, pugi::xml_node canvas, const VmlStyle& placement,
                               const std::string& name);
    pugi::xml_node writeGroup(pugi::xml_node parent, pugi::xml_node group, const VmlStyle& placement,
                              const std::string& name);
    pugi::xml_node writeShape(pugi::xml_node parent, pugi::xml_node shape, VmlStyle placement,
                              const std::string& name);
    pugi::xml_node writePicture(pugi::xml_node parent, pugi::xml_node picture, const VmlStyle& placement,
                                const std::string& name);
    void writeItems(pugi::xml_node group, pugi::xml_node source);
    void writeTextbox(pugi::xml_node element, pugi::xml_node shape, VmlStyle& placement);
    pugi::xml_node startShape(pugi::xml_node parent, const char* element, const std::string& name);
    std::string nextId();

    pugi::xml_node scope_;
    std::int64_t nextId_ = 1025;
    int depth_ = 0;
    bool usesPictureType_ = false;
    bool usesTextboxType_ = false;
};

} // namespace wordbm::ooxml
