#include "settings/MemorySettingsStore.h"

namespace wordbm {

// Application keys and section names never hold a line break, so it keeps the two apart.
std::string MemorySettingsStore::sectionKey(const std::string& appName, const std::string& section) {
    return appName + "\n" + section;
}

SettingsStore::Pairs MemorySettingsStore::getAllSettings(const std::string& appName,
                                                         const std::string& section) const {
    Pairs pairs;
    const Keys* keys = failing_ ? nullptr : sections_.find(sectionKey(appName, section));
    if (keys != nullptr) {
        pairs.assign(keys->begin(), keys->end());
    }
    return pairs;
}

std::optional<std::string> MemorySettingsStore::getSetting(const std::string& appName,
                                                           const std::string& section,
                                                           const std::string& key) const {
    const Keys* keys = failing_ ? nullptr : sections_.find(sectionKey(appName, section));
    const std::string* value = keys == nullptr ? nullptr : keys->find(key);
    return value == nullptr ? std::nullopt : std::optional<std::string>(*value);
}

void MemorySettingsStore::saveSetting(const std::string& appName, const std::string& section,
                                      const std::string& key, const std::string& value) {
    if (failing_) {
        return;
    }
    const std::string name = sectionKey(appName, section);
    Keys* keys = sections_.find(name);
    if (keys == nullptr) {
        keys = &sections_.assign(name, Keys());
    }
    keys->assign(key, value);
}

void MemorySettingsStore::deleteSetting(const std::string& appName, const std::string& section,
                                        const std::string& key) {
    Keys* keys = failing_ ? nullptr : sections_.find(sectionKey(appName, section));
    if (keys != nullptr) {
        keys->erase(key);
    }
}

void MemorySettingsStore::deleteSection(const std::string& appName, const std::string& section) {
    if (!failing_) {
        sections_.erase(sectionKey(appName, section));
    }
}

} // namespace wordbm
