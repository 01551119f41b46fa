#pragma once

#include "settings/SettingsStore.h"

#include <string>

namespace wordbm {

// The settings store on Linux: one INI file per application key under the user's config
// folder ("Tarvell\KDX6" -> "<root>/Tarvell/KDX6.ini"), one INI section per settings section
// ("[Billing\Merger]"). Every change rewrites the file atomically. A file that is not INI
// reads as empty.
class IniSettingsStore final : public SettingsStore {
public:
    // An empty root means $XDG_CONFIG_HOME, or $HOME/.config when that is unset.
    explicit IniSettingsStore(std::string configRoot = {});

    const std::string& configRoot() const { return configRoot_; }
    // The file that holds the application key; empty when no root could be found.
    std::string filePath(const std::string& appName) const;

    Pairs getAllSettings(const std::string& appName, const std::string& section) const override;
    std::optional<std::string> getSetting(const std::string& appName, const std::string& section,
                                          const std::string& key) const override;
    void saveSetting(const std::string& appName, const std::string& section, const std::string& key,
                     const std::string& value) override;
    void deleteSetting(const std::string& appName, const std::string& section,
                       const std::string& key) override;
    void deleteSection(const std::string& appName, const std::string& section) override;

    static std::string defaultConfigRoot();

private:
    std::string configRoot_;
};

} // namespace wordbm
