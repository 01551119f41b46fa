#pragma once

#include "settings/OrderedNoCaseMap.h"
#include "settings/SettingsStore.h"

namespace wordbm {

// Settings kept in memory, for tests and for runs that must not touch the user's settings.
// Names compare ignoring letter case, as the registry does.
class MemorySettingsStore final : public SettingsStore {
public:
    Pairs getAllSettings(const std::string& appName, const std::string& section) const override;
    std::optional<std::string> getSetting(const std::string& appName, const std::string& section,
                                          const std::string& key) const override;
    void saveSetting(const std::string& appName, const std::string& section, const std::string& key,
                     const std::string& value) override;
    void deleteSetting(const std::string& appName, const std::string& section,
                       const std::string& key) override;
    void deleteSection(const std::string& appName, const std::string& section) override;

    // While failing, reads find nothing and writes are dropped, like an unavailable store.
    void setFailing(bool failing) { failing_ = failing; }

private:
    using Keys = OrderedNoCaseMap<std::string>;

    static std::string sectionKey(const std::string& appName, const std::string& section);

    bool failing_ = false;
    OrderedNoCaseMap<Keys> sections_;
};

} // namespace wordbm
