#pragma once

#include <initializer_list>
#include <optional>
#include <string>
#include <utility>
#include <vector>

// Saves the named environment variables, unsets them for the test and restores them afterwards.
class EnvGuard {
public:
    explicit EnvGuard(std::initializer_list<const char*> names);
    ~EnvGuard();
    EnvGuard(const EnvGuard&) = delete;
    EnvGuard& operator=(const EnvGuard&) = delete;

    static void set(const char* name, const std::string& value);

private:
    std::vector<std::pair<std::string, std::optional<std::string>>> saved_;
};
