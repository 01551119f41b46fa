#include "DocumentSnapshot.h"

#include "StoryXml.h"
#include "engine/ooxml/Package.h"

namespace wordbm::ooxml::test {

DocumentSnapshot::DocumentSnapshot(const std::string& path) {
    auto package = Package::open(path);
    for (const auto& part : package->partNames()) {
        if (!part.ends_with(".xml") || part.find("word/") != 0) {
            continue;
        }
        auto& list = paragraphs_[part];
        for (const auto& found : package->xml(part).select_nodes("//w:p")) {
            list.push_back(rawXml(found.node()));
        }
    }
}

std::vector<std::string> DocumentSnapshot::changedSince(const DocumentSnapshot& before) const {
    std::vector<std::string> changed;
    for (const auto& [part, list] : paragraphs_) {
        const auto old = before.paragraphs_.find(part);
        for (std::size_t i = 0; i < list.size(); ++i) {
            if (old == before.paragraphs_.end() || old->second.size() != list.size() ||
                old->second[i] != list[i]) {
                changed.push_back(list[i]);
            }
        }
    }
    return changed;
}

} // namespace wordbm::ooxml::test
