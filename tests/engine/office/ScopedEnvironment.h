#pragma once

#include <initializer_list>
#include <optional>
#include <string>
#include <utility>
#include <vector>

// Saves the named environment variables, unsets them, and puts them back when it goes.
class ScopedEnvironment {
public:
    explicit ScopedEnvironment(std::initializer_list<const char*> names);
    ~ScopedEnvironment();
    ScopedEnvironment(const ScopedEnvironment&) = delete;
    ScopedEnvironment& operator=(const ScopedEnvironment&) = delete;

    static void set(const char* name, const std::string& value);

private:
    std::vector<std::pair<std::string, std::optional<std::string>>> saved_;
};
