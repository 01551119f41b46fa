#include "engine/ooxml/RunFormat.h"

#include "engine/ooxml/Package.h"
#include "engine/ooxml/SchemaOrder.h"

#include <cmath>
#include <cstdlib>
#include <string_view>
#include <vector>

namespace wordbm::ooxml {

namespace {

bool endsWith(std::string_view text, std::string_view tail) {
    return text.size() >= tail.size() && text.substr(text.size() - tail.size()) == tail;
}

// The part a relationship of the main document of the given kind names; empty when none.
std::string relatedPart(Package& package, std::string_view kind) {
    const auto main = package.mainDocumentPart();
    for (const auto& relation : package.relationships(main)) {
        if (endsWith(relation.type, kind) && relation.targetMode.empty()) {
            const auto part = package.resolveTarget(main, relation.target);
            return package.hasPart(part) ? part : std::string();
        }
    }
    return {};
}

pugi::xml_node rootOf(Package& package, std::string_view kind) {
    const auto part = relatedPart(package, kind);
    if (part.empty()) {
        return {};
    }
    try {
        return package.xml(part).document_element();
    } catch (...) {
        return {};
    }
}

bool isOn(pugi::xml_node toggle) {
    const std::string_view value = toggle.attribute("w:val").value();
    return value.empty() || !(value == "0" || value == "false" || value == "off");
}

class Resolver {
public:
    Resolver(Package& package) : styles_(rootOf(package, "/styles")), theme_(rootOf(package, "/theme")) {}

    void apply(pugi::xml_node properties, RunFormat& format) const {
        if (auto fonts = properties.child("w:rFonts")) {
            if (auto ascii = fonts.attribute("w:ascii")) {
                format.font = ascii.value();
            } else if (auto themed = fonts.attribute("w:asciiTheme")) {
                const auto name = themeFont(themed.value());
                if (!name.empty()) {
                    format.font = name;
                }
            }
        }
        if (auto size = properties.child("w:sz")) {
            format.size = static_cast<float>(std::atof(size.attribute("w:val").value()) / 2.0);
        }
        if (auto bold = properties.child("w:b")) {
            format.bold = isOn(bold);
        }
    }

    // Base styles first, so that each style overrides what it is based on; a loop in basedOn ends it.
    void applyStyle(std::string_view id, RunFormat& format) const {
        std::vector<pugi::xml_node> chain;
        for (auto style = find(id); style && chain.size() < 32;
             style = find(style.child("w:basedOn").attribute("w:val").value())) {
            chain.push_back(style);
        }
        for (auto at = chain.rbegin(); at != chain.rend(); ++at) {
            apply(at->child("w:rPr"), format);
        }
    }

    void applyDefaults(RunFormat& format) const {
        apply(styles_.child("w:docDefaults").child("w:rPrDefault").child("w:rPr"), format);
    }

    std::string defaultParagraphStyle() const {
        for (auto style = styles_.child("w:style"); style; style = style.next_sibling("w:style")) {
            if (std::string_view(style.attribute("w:type").value()) == "paragraph" &&
                style.attribute("w:default").as_bool()) {
                return style.attribute("w:styleId").value();
            }
        }
        return {};
    }

private:
    pugi::xml_node find(std::string_view id) const {
        if (id.empty()) {
            return {};
        }
        for (auto style = styles_.child("w:style"); style; style = style.next_sibling("w:style")) {
            if (id == style.attribute("w:styleId").value()) {
                return style;
            }
        }
        return {};
    }

    std::string themeFont(std::string_view which) const {
        const auto scheme = theme_.child("a:themeElements").child("a:fontScheme");
        const bool major = which.substr(0, 5) == "major";
        return (major ? scheme.child("a:majorFont") : scheme.child("a:minorFont"))
            .child("a:latin")
            .attribute("typeface")
            .value();
    }

    pugi::xml_node styles_;
    pugi::xml_node theme_;
};

} // namespace

RunFormat RunFormat::of(Package& package, pugi::xml_node runProperties, pugi::xml_node paragraph) {
    const Resolver resolver(package);
    RunFormat format;
    resolver.applyDefaults(format);
    std::string paragraphStyle = paragraph.child("w:pPr").child("w:pStyle").attribute("w:val").value();
    if (paragraphStyle.empty()) {
        paragraphStyle = resolver.defaultParagraphStyle();
    }
    resolver.applyStyle(paragraphStyle, format);
    resolver.applyStyle(runProperties.child("w:rStyle").attribute("w:val").value(), format);
    resolver.apply(runProperties, format);
    return format;
}

void RunFormat::setFont(pugi::xml_node runProperties, const std::string& name) {
    auto fonts = SchemaOrder::child(runProperties, "w:rFonts");
    for (const char* themed : {"w:asciiTheme", "w:hAnsiTheme", "w:cstheme"}) {
        fonts.remove_attribute(themed);
    }
    for (const char* slot : {"w:ascii", "w:hAnsi", "w:cs"}) {
        auto attribute = fonts.attribute(slot) ? fonts.attribute(slot) : fonts.append_attribute(slot);
        attribute.set_value(name.c_str());
    }
}

void RunFormat::setSize(pugi::xml_node runProperties, float points) {
    const auto halfPoints = std::to_string(std::lround(static_cast<double>(points) * 2.0));
    for (const char* name : {"w:sz", "w:szCs"}) {
        auto size = SchemaOrder::child(runProperties, name);
        auto value = size.attribute("w:val") ? size.attribute("w:val") : size.append_attribute("w:val");
        value.set_value(halfPoints.c_str());
    }
}

void RunFormat::setBold(pugi::xml_node runProperties, bool bold) {
    for (const char* name : {"w:b", "w:bCs"}) {
        auto toggle = SchemaOrder::child(runProperties, name);
        toggle.remove_attribute("w:val");
        if (!bold) {
            toggle.append_attribute("w:val") = "0";
        }
    }
}

} // namespace wordbm::ooxml
