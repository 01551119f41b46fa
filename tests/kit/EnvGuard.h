#pragma once

#include <initializer_list>
#include <optional>
#include <string>
#include <utility>
#include <vector>

// Saves environment variables and restores them when the test is done. Names given alone are unset
// for the test; a name given with a value is set to it (unset for nullopt).
class EnvGuard {
public:
    explicit EnvGuard(std::initializer_list<const char*> names);
    EnvGuard(const char* name, const std::optional<std::string>& value);
    ~EnvGuard();
    EnvGuard(const EnvGuard&) = delete;
    EnvGuard& operator=(const EnvGuard&) = delete;

    static void set(const char* name, const std::optional<std::string>& value);

private:
    void save(const char* name);

    std::vector<std::pair<std::string, std::optional<std::string>>> saved_;
};
