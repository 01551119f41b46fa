#include "kit/EnvGuard.h"

#include <cstdlib>

EnvGuard::EnvGuard(std::initializer_list<const char*> names) {
    for (const char* name : names) {
        const char* value = std::getenv(name);
        saved_.emplace_back(name, value ? std::optional<std::string>(value) : std::nullopt);
        ::unsetenv(name);
    }
}

EnvGuard::~EnvGuard() {
    for (const auto& [name, value] : saved_) {
        if (value) {
            ::setenv(name.c_str(), value->c_str(), 1);
        } else {
            ::unsetenv(name.c_str());
        }
    }
}

void EnvGuard::set(const char* name, const std::string& value) {
    ::setenv(name, value.c_str(), 1);
}
