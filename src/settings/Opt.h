#pragma once

#include "settings/OrderedNoCaseMap.h"
#include "settings/SettingsStore.h"
#include "support/Variant.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <unordered_set>

namespace wordbm {

// The user's options: typed values kept in the per-user settings store as "TypeName>value",
// under an application key and section derived from BasePath, ProgPath and OptionsPath.
// Without direct mode, changes live in the cache until Update (or destruction) writes them.
class Opt {
public:
    using ItemMap = OrderedNoCaseMap<Variant>;

    explicit Opt(std::shared_ptr<SettingsStore> store);
    ~Opt();
    Opt(const Opt&) = delete;
    Opt& operator=(const Opt&) = delete;

    void Init(std::optional<std::string> ThisBasePath = std::nullopt,
              std::optional<std::string> ThisModulePath = std::nullopt,
              std::optional<std::string> ThisFolderPath = std::nullopt, bool ThisDirectMode = false);

    const std::string& BasePath() const { return basePath_; }
    const std::string& ProgPath() const { return progPath_; }
    const std::string& OptionsPath() const { return optionsPath_; }
    const std::string& FullPath() const { return fullPath_; }
    const std::string& AppName() const { return appName_; }
    const std::string& Section() const { return section_; }
    bool DirectMode() const { return directMode_; }

    const ItemMap& Items();
    // The stored value in its stored type; the default (in its own type) when nothing is stored.
    Variant Item(const std::string& key, const std::optional<Variant>& defaultValue = std::nullopt);
    void ItemLet(const std::string& key, const Variant& value);
    // Writes the item's current value to the settings store now, whatever the mode: a setting
    // the window changes survives a program that does not end normally.
    void ItemSave(const std::string& key);
    void ItemDel(const std::string& key);
    void ItemDelAll();
    void Update();

    // Called between the entries that Update writes, so a window can keep handling its events.
    void setEventHook(std::function<void()> hook) { eventHook_ = std::move(hook); }

    // The stored text "TypeName>value" and back, usable without a store.
    static std::string encode(const Variant& value);
    static Variant decode(const std::string& stored,
                          const std::optional<Variant>& defaultValue = std::nullopt);

private:
    void derivePaths();
    void ensureLoaded();

    std::shared_ptr<SettingsStore> store_;
    std::function<void()> eventHook_;
    std::string basePath_ = "Tarvell\\KDX6";
    std::string progPath_ = "Interface";
    std::string optionsPath_ = "Options";
    std::string fullPath_;
    std::string appName_;
    std::string section_;
    bool directMode_ = false;
    bool loaded_ = false;
    ItemMap cache_;
    // Folded keys whose stored text had no type name; their first read with a default converts them.
    std::unordered_set<std::string> untyped_;
};

} // namespace wordbm
