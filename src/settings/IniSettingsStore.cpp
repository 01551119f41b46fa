#include "settings/IniSettingsStore.h"

#include "settings/IniFile4.h"
#include "support/FileOps.h"
#include "support/Strings.h"

#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace wordbm {

namespace {

std::string environment(const char* name) {
    const char* value = std::getenv(name);
    return value == nullptr ? std::string() : std::string(value);
}

// The INI format has no escapes: a line break would forge a new line and a "]" in a section
// name would end its header early, so both are replaced before they reach the file.
std::string flattened(std::string_view text) {
    std::string result(text);
    for (char& c : result) {
        if (c == '\r' || c == '\n') {
            c = ' ';
        }
    }
    return result;
}

std::string sectionName(std::string_view section) {
    return replaceAll(flattened(section), "]", ")");
}

IniFile4 loaded(const std::string& path) {
    IniFile4 ini;
    if (!path.empty()) {
        ini.FilePath(path);
    }
    return ini;
}

// Whether every line of the file is a section header or an entry under one, so rewriting it from
// what was read loses nothing. Binary, UTF-16 or hand-written text fails this test.
bool fullyUnderstood(std::string_view bytes) {
    if (bytes.find('\0') != std::string_view::npos) {
        return false;
    }
    bool inSection = false;
    for (const std::string& raw : split(replaceAll(replaceAll(bytes, "\r\n", "\n"), "\r", "\n"), "\n")) {
        const std::string line = trim(raw);
        if (line.empty()) {
            continue;
        }
        if (line.front() == '[' && line.find(']') != std::string::npos) {
            inSection = true;
        } else if (!inSection || line.find('=') == std::string::npos || line.front() == '=') {
            return false;
        }
    }
    return true;
}

// A settings file the store could not read in full is kept beside it, under the first free name
// "<file>.bak", "<file>.bak1", ..., before the rewrite drops what was not understood.
void keepUnreadable(const std::string& path) {
    std::error_code error;
    if (!std::filesystem::exists(path, error)) {
        return;
    }
    const std::optional<std::string> bytes = readFileBytes(path);
    if (bytes && fullyUnderstood(*bytes)) {
        return;
    }
    for (int number = 0; number < 100; ++number) {
        const std::string copy = path + ".bak" + (number == 0 ? std::string() : std::to_string(number));
        if (!std::filesystem::exists(std::filesystem::symlink_status(copy, error))) {
            (void)FileCopy(path, copy);
            return;
        }
    }
}

void store(IniFile4& ini) {
    std::error_code error;
    std::filesystem::create_directories(std::filesystem::path(ini.FilePath()).parent_path(), error);
    keepUnreadable(ini.FilePath());
    ini.WriteFile({}, true);
}

} // namespace

IniSettingsStore::IniSettingsStore(std::string configRoot)
    : configRoot_(configRoot.empty() ? defaultConfigRoot() : std::move(configRoot)) {}

std::string IniSettingsStore::defaultConfigRoot() {
    // A relative XDG_CONFIG_HOME is invalid by the XDG rules and is ignored like an unset one.
    const std::string xdg = environment("XDG_CONFIG_HOME");
    if (!xdg.empty() && xdg.front() == '/') {
        return xdg;
    }
    const std::string home = environment("HOME");
    return home.empty() ? std::string() : home + "/.config";
}

std::string IniSettingsStore::filePath(const std::string& appName) const {
    if (configRoot_.empty()) {
        return {};
    }
    // "." and ".." are dropped so an application key can never lead out of the config folder.
    std::vector<std::string> parts;
    for (std::string& part : split(replaceAll(appName, "/", "\\"), "\\")) {
        if (!part.empty() && part != "." && part != "..") {
            parts.push_back(std::move(part));
        }
    }
    if (parts.empty()) {
        return {};
    }
    return configRoot_ + "/" + join(parts, "/") + ".ini";
}

SettingsStore::Pairs IniSettingsStore::getAllSettings(const std::string& appName,
                                                      const std::string& section) const {
    IniFile4 ini = loaded(filePath(appName));
    const std::string name = sectionName(section);
    Pairs pairs;
    for (const std::string& line : ini.Section(name)) {
        const std::size_t equals = line.find('=');
        if (!line.empty() && line.front() != '[' && equals != std::string::npos && equals > 0) {
            std::string key = line.substr(0, equals);
            std::string value = ini.Value(name, key);
            pairs.emplace_back(std::move(key), std::move(value));
        }
    }
    return pairs;
}

std::optional<std::string> IniSettingsStore::getSetting(const std::string& appName,
                                                        const std::string& section,
                                                        const std::string& key) const {
    const IniFile4 ini = loaded(filePath(appName));
    const std::string name = sectionName(section);
    if (ini.ValueFull(name, flattened(key)).empty()) {
        return std::nullopt;
    }
    return ini.Value(name, flattened(key));
}

void IniSettingsStore::saveSetting(const std::string& appName, const std::string& section,
                                   const std::string& key, const std::string& value) {
    const std::string path = filePath(appName);
    if (path.empty()) {
        return;
    }
    IniFile4 ini = loaded(path);
    ini.Value(sectionName(section), flattened(key), flattened(value));
    store(ini);
}

void IniSettingsStore::deleteSetting(const std::string& appName, const std::string& section,
                                     const std::string& key) {
    IniFile4 ini = loaded(filePath(appName));
    const std::string name = sectionName(section);
    if (ini.ValueFull(name, flattened(key)).empty()) {
        return;
    }
    // An empty value leaves a blank line, which the next reading drops together with the key.
    ini.Value(name, flattened(key), {});
    store(ini);
}

void IniSettingsStore::deleteSection(const std::string& appName, const std::string& section) {
    IniFile4 ini = loaded(filePath(appName));
    if (ini.FilePath().empty() || !ini.Exists()) {
        return;
    }
    ini.RemoveSection(sectionName(section));
    // Writing skips a file without sections, so the last section goes with the file itself.
    if (ini.Stream().empty()) {
        keepUnreadable(ini.FilePath());
        // A link stays a link: the linked file is emptied, so the next change is written through it.
        std::error_code error;
        if (std::filesystem::is_symlink(ini.FilePath(), error)) {
            (void)writeFileAtomic(ini.FilePath(), {});
            return;
        }
        ini.Delete();
    } else {
        store(ini);
    }
}

} // namespace wordbm
