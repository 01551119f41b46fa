#include "engine/ooxml/StoryRegistry.h"

#include "engine/ooxml/Package.h"
#include "engine/ooxml/PackageError.h"
#include "engine/ooxml/ShapeXml.h"
#include "engine/ooxml/XmlTree.h"

#include <algorithm>
#include <string_view>

namespace wordbm::ooxml {

namespace {

bool endsWith(std::string_view text, std::string_view tail) {
    return text.size() >= tail.size() && text.substr(text.size() - tail.size()) == tail;
}

// "word/header2.xml" -> "header2"
std::string stem(const std::string& partName) {
    const auto slash = partName.rfind('/');
    auto name = partName.substr(slash == std::string::npos ? 0 : slash + 1);
    return name.substr(0, name.rfind('.'));
}

// The shape a text box belongs to gives it its name: a canvas or group item by its own cNvPr, a
// top-level drawing by its docPr, a VML shape by its id.
std::string textBoxName(pugi::xml_node content) {
    for (auto node = content.parent(); node; node = node.parent()) {
        const std::string_view name = node.name();
        const bool item = name == "wps:wsp" && node.child("wps:cNvPr");
        const bool frame = name == "wp:anchor" || name == "wp:inline";
        const bool vml = name.substr(0, 2) == "v:" && name != "v:textbox";
        if (item || frame || vml) {
            return ShapeXml(node).name();
        }
    }
    return {};
}

bool naturalLess(const std::string& a, const std::string& b) {
    const auto digitsFrom = [](const std::string& s) { return s.find_first_of("0123456789"); };
    const auto da = digitsFrom(a);
    const auto db = digitsFrom(b);
    if (da != std::string::npos && db != std::string::npos && a.substr(0, da) == b.substr(0, db)) {
        return std::stol(a.substr(da, 9)) < std::stol(b.substr(db, 9));
    }
    return a < b;
}

} // namespace

StoryRegistry::StoryRegistry(Package& package) : package_(package) {
    const auto mainPart = package.mainDocumentPart();
    auto body = package.xml(mainPart).document_element().child("w:body");
    if (!body) {
        throw packageError::damaged("der Haupttext fehlt");
    }
    parts_.push_back(std::make_unique<Story>(StoryKind::Main, "main", mainPart, body));
    std::vector<std::pair<StoryKind, std::string>> headers;
    for (const auto& relation : package.relationships(mainPart)) {
        if (!relation.targetMode.empty()) {
            continue;
        }
        const auto target = package.resolveTarget(mainPart, relation.target);
        if (endsWith(relation.type, "/header")) {
            headers.emplace_back(StoryKind::Header, target);
        } else if (endsWith(relation.type, "/footer")) {
            headers.emplace_back(StoryKind::Footer, target);
        }
    }
    std::sort(headers.begin(), headers.end(), [](const auto& a, const auto& b) {
        return a.first != b.first ? a.first < b.first : naturalLess(stem(a.second), stem(b.second));
    });
    for (const auto& [kind, target] : headers) {
        addPart(kind, target, nullptr);
    }
    for (const auto& relation : package.relationships(mainPart)) {
        const auto target = package.resolveTarget(mainPart, relation.target);
        if (!relation.targetMode.empty()) {
            continue;
        }
        if (endsWith(relation.type, "/footnotes")) {
            addPart(StoryKind::Footnotes, target, nullptr);
        } else if (endsWith(relation.type, "/endnotes")) {
            addPart(StoryKind::Endnotes, target, nullptr);
        } else if (endsWith(relation.type, "/comments")) {
            addPart(StoryKind::Comments, target, nullptr);
        }
    }
}

void StoryRegistry::addPart(StoryKind kind, const std::string& partName, const char*) {
    if (!package_.hasPart(partName) || part(partName)) {
        return;
    }
    // A part that cannot be read costs its story, not the whole document.
    try {
        auto root = package_.xml(partName).document_element();
        const std::string_view expected = kind == StoryKind::Header      ? "w:hdr"
                                          : kind == StoryKind::Footer    ? "w:ftr"
                                          : kind == StoryKind::Footnotes ? "w:footnotes"
                                          : kind == StoryKind::Endnotes  ? "w:endnotes"
                                                                         : "w:comments";
        if (expected == root.name()) {
            parts_.push_back(std::make_unique<Story>(kind, stem(partName), partName, root));
        }
    } catch (const AutomationError&) {
        // Unreadable: the part has no story (see above).
    }
}

std::vector<Story*> StoryRegistry::all() {
    findTextBoxes();
    std::vector<Story*> stories;
    for (const auto& story : parts_) {
        stories.push_back(story.get());
    }
    for (const auto& story : textBoxes_) {
        if (story->alive()) {
            stories.push_back(story.get());
        }
    }
    return stories;
}

std::vector<Story*> StoryRegistry::headersAndFooters() {
    std::vector<Story*> stories;
    for (const auto& story : parts_) {
        if (story->kind() == StoryKind::Header || story->kind() == StoryKind::Footer) {
            stories.push_back(story.get());
        }
    }
    return stories;
}

Story* StoryRegistry::part(const std::string& partName) {
    for (const auto& story : parts_) {
        if (story->partName() == partName) {
            return story.get();
        }
    }
    return nullptr;
}

Story* StoryRegistry::textBox(pugi::xml_node content) {
    findTextBoxes();
    for (const auto& story : textBoxes_) {
        if (story->alive() && story->root() == content) {
            return story.get();
        }
    }
    return nullptr;
}

Story* StoryRegistry::partHolding(pugi::xml_node node) {
    for (const auto& story : parts_) {
        if (xmltree::isInside(node, story->root()) || node == story->root()) {
            return story.get();
        }
    }
    return nullptr;
}

void StoryRegistry::retireInside(pugi::xml_node subtree) {
    for (const auto& story : textBoxes_) {
        if (story->alive() && (story->root() == subtree || xmltree::isInside(story->root(), subtree))) {
            story->retire();
        }
    }
}

void StoryRegistry::findTextBoxes() {
    if (textBoxesKnown_) {
        return;
    }
    std::vector<std::unique_ptr<Story>> found;
    for (const auto& owner : parts_) {
        xmltree::forEachNamed(owner->root(), "w:txbxContent", [&](pugi::xml_node content) {
            if (xmltree::inFallback(content, owner->root())) {
                return;
            }
            // Known text boxes keep their story object (ranges may point at it).
            const auto known = std::find_if(textBoxes_.begin(), textBoxes_.end(), [&](const auto& story) {
                return story && story->alive() && story->root() == content;
            });
            if (known != textBoxes_.end()) {
                found.push_back(std::move(*known));
            } else {
                found.push_back(std::make_unique<Story>(StoryKind::TextBox, "textbox:" + textBoxName(content),
                                                        owner->partName(), content));
            }
        });
    }
    // Stories not found again lost their drawing some other way; they stay allocated but retired.
    for (auto& story : textBoxes_) {
        if (story) {
            story->retire();
            found.push_back(std::move(story));
        }
    }
    textBoxes_ = std::move(found);
    textBoxesKnown_ = true;
}

} // namespace wordbm::ooxml
