#pragma once

#include <filesystem>
#include <string>

// A fresh folder for one test, removed with everything in it (read-only parts included).
class TempDir {
public:
    TempDir();
    ~TempDir();
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;

    const std::filesystem::path& path() const { return path_; }
    std::string operator/(const std::string& name) const { return (path_ / name).string(); }

    static std::size_t entriesIn(const std::filesystem::path& folder);
    // Root writes into read-only folders, so tests of refused writing cannot run as root.
    static bool runningAsRoot();

private:
    std::filesystem::path path_;
};
