#include "engine/ooxml/SectionLayout.h"

#include "engine/ooxml/Package.h"
#include "engine/ooxml/StoryRegistry.h"

#include <algorithm>
#include <string_view>

namespace wordbm::ooxml {

namespace {

int typeIndex(std::string_view type) {
    return type == "first" ? 1 : type == "even" ? 2 : 0;
}

// wdStoryType of a header (footer) shown as primary, first page, even pages.
constexpr std::array<int, 3> HeaderStoryTypes{7, 10, 6};
constexpr std::array<int, 3> FooterStoryTypes{9, 11, 8};

} // namespace

std::vector<pugi::xml_node> SectionLayout::properties(Story& main) {
    std::vector<pugi::xml_node> found;
    for (const auto& item : main.map().items) {
        if (item.kind == ItemKind::ParagraphMark) {
            if (auto properties = item.node.child("w:pPr").child("w:sectPr")) {
                found.push_back(properties);
            }
        }
    }
    found.push_back(main.root().child("w:sectPr"));
    return found;
}

std::vector<SectionParts> SectionLayout::read(Package& package, StoryRegistry& stories) {
    const auto mainPart = stories.main().partName();
    const auto relations = package.relationships(mainPart);
    const auto partOf = [&](std::string_view id) -> std::string {
        for (const auto& relation : relations) {
            if (relation.id == id && relation.targetMode.empty()) {
                return package.resolveTarget(mainPart, relation.target);
            }
        }
        return {};
    };
    std::vector<SectionParts> sections;
    SectionParts inherited;
    std::vector<Story*> typed;
    const auto giveType = [&](const std::string& partName, int type) {
        auto* story = stories.part(partName);
        if (story && std::find(typed.begin(), typed.end(), story) == typed.end()) {
            story->setWordType(type);
            typed.push_back(story);
        }
    };
    for (const auto properties : SectionLayout::properties(stories.main())) {
        for (auto reference = properties.first_child(); reference; reference = reference.next_sibling()) {
            const std::string_view name = reference.name();
            const bool header = name == "w:headerReference";
            if (!header && name != "w:footerReference") {
                continue;
            }
            const int index = typeIndex(reference.attribute("w:type").value());
            auto part = partOf(reference.attribute("r:id").value());
            if (part.empty() || !stories.part(part)) {
                continue;
            }
            giveType(part, header ? HeaderStoryTypes[index] : FooterStoryTypes[index]);
            (header ? inherited.headers : inherited.footers)[index] = std::move(part);
        }
        sections.push_back(inherited);
    }
    return sections;
}

} // namespace wordbm::ooxml
