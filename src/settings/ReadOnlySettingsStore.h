#pragma once

#include "settings/SettingsStore.h"

#include <memory>

namespace wordbm {

// A view of the user's settings store that reads through and drops every change. The batch verbs
// use it: they take the remembered mask and choices, but what the window remembers stays the
// user's, byte for byte, however a run ends.
class ReadOnlySettingsStore final : public SettingsStore {
public:
    explicit ReadOnlySettingsStore(std::shared_ptr<const SettingsStore> store) : store_(std::move(store)) {}

    Pairs getAllSettings(const std::string& appName, const std::string& section) const override {
        return store_->getAllSettings(appName, section);
    }
    std::optional<std::string> getSetting(const std::string& appName, const std::string& section,
                                          const std::string& key) const override {
        return store_->getSetting(appName, section, key);
    }
    void saveSetting(const std::string&, const std::string&, const std::string&,
                     const std::string&) override {}
    void deleteSetting(const std::string&, const std::string&, const std::string&) override {}
    void deleteSection(const std::string&, const std::string&) override {}

private:
    std::shared_ptr<const SettingsStore> store_;
};

} // namespace wordbm
