#include "engine/ooxml/SchemaOrder.h"

#include <array>
#include <string>

namespace wordbm::ooxml {

namespace {

constexpr std::array<std::string_view, 40> RunPropertyOrder{"w:rStyle",
                                                            "w:rFonts",
                                                            "w:b",
                                                            "w:bCs",
                                                            "w:i",
                                                            "w:iCs",
                                                            "w:caps",
                                                            "w:smallCaps",
                                                            "w:strike",
                                                            "w:dstrike",
                                                            "w:outline",
                                                            "w:shadow",
                                                            "w:emboss",
                                                            "w:imprint",
                                                            "w:noProof",
                                                            "w:snapToGrid",
                                                            "w:vanish",
                                                            "w:webHidden",
                                                            "w:color",
                                                            "w:spacing",
                                                            "w:w",
                                                            "w:kern",
                                                            "w:position",
                                                            "w:sz",
                                                            "w:szCs",
                                                            "w:highlight",
                                                            "w:u",
                                                            "w:effect",
                                                            "w:bdr",
                                                            "w:shd",
                                                            "w:fitText",
                                                            "w:vertAlign",
                                                            "w:rtl",
                                                            "w:cs",
                                                            "w:em",
                                                            "w:lang",
                                                            "w:eastAsianLayout",
                                                            "w:specVanish",
                                                            "w:oMath",
                                                            "w:rPrChange"};

int indexIn(const auto& order, std::string_view name) {
    for (std::size_t i = 0; i < order.size(); ++i) {
        if (order[i] == name) {
            return static_cast<int>(i);
        }
    }
    return -1;
}

} // namespace

int SchemaOrder::rank(std::string_view parent, std::string_view name) {
    if (parent == "w:rPr") {
        return indexIn(RunPropertyOrder, name);
    }
    if (parent == "w:r" || parent == "w:p") {
        // Only the properties have a fixed place in a run or paragraph: first.
        return name == "w:rPr" || name == "w:pPr" ? 0 : 1;
    }
    if (parent == "w:pPr") {
        // The mark's run properties, the section and the change record close the paragraph properties.
        return name == "w:rPr" ? 1 : name == "w:sectPr" ? 2 : name == "w:pPrChange" ? 3 : 0;
    }
    return -1;
}

pugi::xml_node SchemaOrder::child(pugi::xml_node parent, std::string_view name) {
    const std::string key(name);
    if (auto existing = parent.child(key.c_str())) {
        return existing;
    }
    const std::string_view parentName = parent.name();
    const int wanted = rank(parentName, name);
    if (wanted >= 0) {
        for (auto sibling = parent.first_child(); sibling; sibling = sibling.next_sibling()) {
            if (sibling.type() != pugi::node_element) {
                continue;
            }
            const int other = rank(parentName, sibling.name());
            if (other < 0 || other > wanted) {
                return parent.insert_child_before(key.c_str(), sibling);
            }
        }
    }
    return parent.append_child(key.c_str());
}

} // namespace wordbm::ooxml
