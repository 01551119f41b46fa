#include "engine/ooxml/MailMergeSettings.h"

#include "engine/ooxml/Package.h"
#include "engine/ooxml/XmlTree.h"
#include "engine/word/AutomationError.h"

#include <array>
#include <set>
#include <string_view>

namespace wordbm::ooxml {

namespace {

constexpr std::array<std::string_view, 6> TypeNames{"formLetters", "mailingLabels", "envelopes",
                                                    "catalog",     "email",         "fax"};

bool endsWith(std::string_view text, std::string_view tail) {
    return text.size() >= tail.size() && text.substr(text.size() - tail.size()) == tail;
}

} // namespace

std::string MailMergeSettings::settingsPart(Package& package) {
    const auto main = package.mainDocumentPart();
    for (const auto& relation : package.relationships(main)) {
        if (endsWith(relation.type, "/settings") && relation.targetMode.empty()) {
            const auto part = package.resolveTarget(main, relation.target);
            return package.hasPart(part) ? part : std::string();
        }
    }
    return {};
}

int MailMergeSettings::mainDocumentType(Package& package) {
    const auto part = settingsPart(package);
    if (part.empty()) {
        return -1;
    }
    const auto mailMerge = package.xml(part).document_element().child("w:mailMerge");
    if (!mailMerge) {
        return -1;
    }
    const std::string_view value = mailMerge.child("w:mainDocumentType").attribute("w:val").value();
    for (std::size_t i = 0; i < TypeNames.size(); ++i) {
        if (TypeNames[i] == value) {
            return static_cast<int>(i);
        }
    }
    return 0;
}

bool MailMergeSettings::setMainDocumentType(Package& package, int type) {
    const auto part = settingsPart(package);
    auto mailMerge =
        part.empty() ? pugi::xml_node() : package.xml(part).document_element().child("w:mailMerge");
    if (type == -1) {
        if (!mailMerge) {
            return false;
        }
        std::set<std::string> ids;
        for (auto node = xmltree::next(mailMerge, mailMerge); node; node = xmltree::next(node, mailMerge)) {
            if (auto id = node.attribute("r:id")) {
                ids.insert(id.value());
            }
        }
        mailMerge.parent().remove_child(mailMerge);
        for (const auto& id : ids) {
            package.removeRelationship(part, id);
        }
        package.markModified(part);
        return true;
    }
    if (type < 0 || type >= static_cast<int>(TypeNames.size()) || !mailMerge) {
        throw AutomationError("Der Seriendruck-Dokumenttyp kann hier nicht gesetzt werden.");
    }
    mailMerge.child("w:mainDocumentType").attribute("w:val").set_value(std::string(TypeNames[type]).c_str());
    package.markModified(part);
    return true;
}

} // namespace wordbm::ooxml
