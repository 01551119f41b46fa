#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>

namespace wordbm::testing {

// A fresh folder under the system temp folder, removed with everything in it.
class TempFolder {
public:
    TempFolder() : path_((std::filesystem::temp_directory_path() / "wordbm-app-XXXXXX").string()) {
        if (::mkdtemp(path_.data()) == nullptr) {
            path_.clear();
        }
    }
    ~TempFolder() {
        std::error_code error;
        std::filesystem::remove_all(path_, error);
    }
    std::string path(const std::string& name = {}) const { return name.empty() ? path_ : path_ + "/" + name; }

private:
    std::string path_;
};

inline void writeBytes(const std::string& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
}

inline std::string readBytes(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

// Sets (nullopt: unsets) an environment variable for the scope of the object.
class EnvironmentVariable {
public:
    EnvironmentVariable(std::string name, const std::optional<std::string>& value) : name_(std::move(name)) {
        if (const char* old = std::getenv(name_.c_str())) {
            old_ = old;
        }
        set(value);
    }
    ~EnvironmentVariable() { set(old_); }

private:
    void set(const std::optional<std::string>& value) const {
        value ? ::setenv(name_.c_str(), value->c_str(), 1) : ::unsetenv(name_.c_str());
    }

    std::string name_;
    std::optional<std::string> old_;
};

} // namespace wordbm::testing
