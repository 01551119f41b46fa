#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace wordbm {

// The per-user application settings store, addressed by application key, section and key
// (the registry on Windows, an INI file here). Failures are swallowed: reads give neutral
// results and writes are dropped, because settings must never stop the program.
class SettingsStore {
public:
    using Pairs = std::vector<std::pair<std::string, std::string>>;

    virtual ~SettingsStore() = default;

    virtual Pairs getAllSettings(const std::string& appName, const std::string& section) const = 0;
    // nullopt when the key is not stored.
    virtual std::optional<std::string> getSetting(const std::string& appName, const std::string& section,
                                                  const std::string& key) const = 0;
    virtual void saveSetting(const std::string& appName, const std::string& section, const std::string& key,
                             const std::string& value) = 0;
    virtual void deleteSetting(const std::string& appName, const std::string& section,
                               const std::string& key) = 0;
    virtual void deleteSection(const std::string& appName, const std::string& section) = 0;

protected:
    SettingsStore() = default;
    SettingsStore(const SettingsStore&) = default;
    SettingsStore& operator=(const SettingsStore&) = default;
};

} // namespace wordbm
