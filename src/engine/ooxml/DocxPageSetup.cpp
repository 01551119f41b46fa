#include "engine/ooxml/DocxPageSetup.h"

#include "engine/ooxml/DocxDocument.h"
#include "engine/ooxml/SectionLayout.h"
#include "engine/ooxml/Story.h"
#include "engine/ooxml/StoryRegistry.h"
#include "engine/word/AutomationError.h"

#include <cmath>
#include <string>
#include <string_view>

namespace wordbm::ooxml {

namespace {

// What Word takes when the section does not say: A4, a bottom margin of 2.5 cm.
constexpr int DefaultPageHeight = 16838;
constexpr int DefaultBottomMargin = 1418;
constexpr float TwipsPerPoint = 20.0F;

// w:pgMar follows these in a w:sectPr.
bool precedesMargins(std::string_view name) {
    return name == "w:headerReference" || name == "w:footerReference" || name == "w:footnotePr" ||
           name == "w:endnotePr" || name == "w:type" || name == "w:pgSz";
}

int twips(pugi::xml_node element, const char* attribute, int fallback) {
    const pugi::xml_attribute value = element.attribute(attribute);
    return value ? value.as_int(fallback) : fallback;
}

} // namespace

pugi::xml_node DocxPageSetup::properties(bool create) const {
    document_->check();
    Story& main = document_->stories().main();
    const std::vector<pugi::xml_node> sections = SectionLayout::properties(main);
    if (index_ < 1 || index_ > static_cast<int>(sections.size())) {
        throw AutomationError("Das angeforderte Element ist nicht vorhanden.");
    }
    pugi::xml_node found = sections[static_cast<std::size_t>(index_ - 1)];
    if (!found && create) {
        found = main.root().append_child("w:sectPr");
    }
    return found;
}

float DocxPageSetup::PageHeight() const {
    return static_cast<float>(twips(properties(false).child("w:pgSz"), "w:h", DefaultPageHeight)) /
           TwipsPerPoint;
}

float DocxPageSetup::BottomMargin() const {
    return static_cast<float>(twips(properties(false).child("w:pgMar"), "w:bottom", DefaultBottomMargin)) /
           TwipsPerPoint;
}

void DocxPageSetup::BottomMargin(float points) {
    pugi::xml_node section = properties(true);
    pugi::xml_node margins = section.child("w:pgMar");
    if (!margins) {
        pugi::xml_node before;
        for (pugi::xml_node child : section.children()) {
            if (precedesMargins(child.name())) {
                before = child;
            }
        }
        margins = before ? section.insert_child_after("w:pgMar", before) : section.prepend_child("w:pgMar");
    }
    const std::string value = std::to_string(std::lround(points * TwipsPerPoint));
    (margins.attribute("w:bottom") ? margins.attribute("w:bottom") : margins.append_attribute("w:bottom"))
        .set_value(value.c_str());
    document_->pageSetupChanged();
}

} // namespace wordbm::ooxml
