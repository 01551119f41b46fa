#include "kit/EnvGuard.h"

#include <cstdlib>

EnvGuard::EnvGuard(std::initializer_list<const char*> names) {
    for (const char* name : names) {
        save(name);
        set(name, std::nullopt);
    }
}

EnvGuard::EnvGuard(const char* name, const std::optional<std::string>& value) {
    save(name);
    set(name, value);
}

EnvGuard::~EnvGuard() {
    for (const auto& [name, value] : saved_) {
        set(name.c_str(), value);
    }
}

void EnvGuard::save(const char* name) {
    const char* value = std::getenv(name);
    saved_.emplace_back(name, value ? std::optional<std::string>(value) : std::nullopt);
}

void EnvGuard::set(const char* name, const std::optional<std::string>& value) {
    if (value) {
        ::setenv(name, value->c_str(), 1);
    } else {
        ::unsetenv(name);
    }
}
