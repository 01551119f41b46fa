#include "support/Folders.h"

#include "support/FileOps.h"
#include "support/Regional.h"
#include "support/Strings.h"

#include <chrono>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <optional>
#include <random>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <vector>

namespace wordbm {

namespace {

constexpr std::string_view TestFileContent = "HelloWorld!";

std::string environment(const char* name) {
    const char* value = std::getenv(name);
    return value ? std::string(value) : std::string();
}

// A path with a NUL byte would silently name a shorter path at the system call.
bool usablePathText(std::string_view path) {
    return !path.empty() && path.find('\0') == std::string_view::npos;
}

bool isFolder(const std::string& native) {
    std::error_code error;
    return usablePathText(native) && std::filesystem::is_directory(native, error);
}

// Creates (or appends to) the file, writes the marker and removes it again, whatever happened.
bool canWriteFile(const std::string& native) {
    const int fd = ::open(native.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0666);
    if (fd < 0) {
        return false;
    }
    const auto written = ::write(fd, TestFileContent.data(), TestFileContent.size());
    const bool closed = ::close(fd) == 0;
    const bool removed = ::unlink(native.c_str()) == 0;
    return written == static_cast<ssize_t>(TestFileContent.size()) && closed && removed;
}

double randomFraction() {
    // Seeded once from the clock and the system's entropy, so two calls in the same tick differ.
    static std::mt19937_64 engine = [] {
        std::random_device device;
        const auto ticks = std::chrono::steady_clock::now().time_since_epoch().count();
        std::seed_seq seed{static_cast<std::uint64_t>(ticks), static_cast<std::uint64_t>(device())};
        return std::mt19937_64(seed);
    }();
    return std::uniform_real_distribution<double>(0.0, 1.0)(engine);
}

// The user's profile folder; HOME stands in where the Windows variable is not set.
std::string profileFolder() {
    const char* profile = std::getenv("USERPROFILE");
    return profile ? std::string(profile) : environment("HOME");
}

std::string configHome() {
    const std::string xdg = environment("XDG_CONFIG_HOME");
    if (xdg.starts_with('/')) {
        return xdg;
    }
    const std::string home = environment("HOME");
    return home.empty() ? std::string() : home + "/.config";
}

// XDG_DOCUMENTS_DIR as user-dirs.dirs writes it: "$HOME/Dokumente" or an absolute path, quoted.
std::string documentsEntry(const std::string& value, const std::string& home) {
    std::string path = trim(value);
    if (path.size() >= 2 && path.front() == '"' && path.back() == '"') {
        path = path.substr(1, path.size() - 2);
    }
    if (path.starts_with("$HOME")) {
        path = home + path.substr(5);
    }
    return path.starts_with('/') ? path : std::string();
}

// The desktop's documents folder (~/Dokumente on a German desktop), from the environment or the
// user's user-dirs.dirs; empty when none is set or it is the home folder itself (XDG's "unset").
std::string desktopDocumentsFolder() {
    const std::string home = environment("HOME");
    std::string folder = documentsEntry(environment("XDG_DOCUMENTS_DIR"), home);
    if (folder.empty() && !configHome().empty()) {
        const std::optional<std::string> text = readFileBytes(configHome() + "/user-dirs.dirs");
        for (const std::string& line : text ? split(*text, "\n") : std::vector<std::string>()) {
            const std::string entry = trim(line);
            if (entry.starts_with("XDG_DOCUMENTS_DIR=")) {
                folder = documentsEntry(entry.substr(18), home);
            }
        }
    }
    while (folder.size() > 1 && folder.back() == '/') {
        folder.pop_back();
    }
    return folder == home ? std::string() : folder;
}

// "Documents" in the profile, or the desktop's own documents folder where HOME is the profile.
std::string documentsCandidate(const std::string& profile) {
    if (std::getenv("USERPROFILE") == nullptr) {
        if (std::string desktop = desktopDocumentsFolder(); !desktop.empty()) {
            return desktop;
        }
    }
    return PathJoin(profile, "Documents");
}

bool privateFolder(const std::string& native) {
    struct stat status {};
    return ::lstat(native.c_str(), &status) == 0 && S_ISDIR(status.st_mode) && status.st_uid == ::geteuid() &&
           (status.st_mode & 077) == 0;
}

// The last fallback: a folder of the user's own that nobody else can read, never the shared temp
// folder itself: "Tarvell" in the user's cache folder, else one made for this process in the temp folder.
} // namespace

std::string UserOwnFolderGet() {
    const std::string xdgCache = environment("XDG_CACHE_HOME");
    const std::string home = environment("HOME");
    const std::string cache = xdgCache.starts_with('/') ? xdgCache
                              : home.empty()            ? std::string()
                                                        : home + "/.cache";
    if (!cache.empty()) {
        std::error_code error;
        std::filesystem::create_directories(cache, error);
        const std::string own = cache + "/Tarvell";
        ::mkdir(own.c_str(), 0700);
        if (privateFolder(own)) {
            return own;
        }
    }
    static const std::string made = [] {
        std::error_code error;
        std::string pattern = std::filesystem::temp_directory_path(error).string();
        pattern = (error || pattern.empty() ? std::string("/tmp") : pattern) + "/wordbm-XXXXXX";
        return ::mkdtemp(pattern.data()) == nullptr ? std::string() : pattern;
    }();
    return made;
}

namespace {

// Candidates 1 to 8 in the order they are tried; the system temp folder follows untested.
std::vector<std::string> baseFolderCandidates() {
    const std::string profile = profileFolder();
    // HOMEDRVE (sic) is the name the suite has always read; it is normally unset.
    const std::string homePath = PathJoin(environment("HOMEDRVE"), environment("HOMEPATH"));
    return {
        environment("TARVELL_DEBUG"),
        documentsCandidate(profile),
        PathJoin(profile, "Eigene Dateien"),
        PathJoin(homePath, "Documents"),
        PathJoin(homePath, "Eigene Dateien"),
        environment("TEMP"),
        environment("TMP"),
        environment("HOMEDRIVE"),
    };
}

// Working copies are client invoices: the folder is the user's alone.
bool createOneFolder(const std::string& native) {
    return usablePathText(native) && ::mkdir(native.c_str(), 0700) == 0;
}

} // namespace

std::string PathJoin(std::string_view left, std::string_view right) {
    std::string joined = trim(left);
    if (joined.empty() || joined.back() != '\\') {
        joined += '\\';
    }
    std::string tail = trim(right);
    if (tail.starts_with('\\')) {
        tail.erase(0, 1);
    }
    joined += tail;
    return joined;
}

std::string nativePath(std::string_view path) {
    std::string native(path);
    for (char& c : native) {
        if (c == '\\') {
            c = '/';
        }
    }
    return native;
}

bool FolderUsable(std::string_view path, bool existenceOnly) {
    const std::string native = nativePath(path);
    if (!isFolder(native)) {
        return false;
    }
    return existenceOnly || canWriteFile(nativePath(PathJoin(native, TestFileName())));
}

std::string TestFileName() {
    const auto number = static_cast<long long>(regional::roundHalfEven(randomFraction() * 1000000));
    return "_$_$_" + zeroPad(number, 6) + "_$_$_";
}

std::string BaseFolderGet(bool existenceOnly, bool /*store*/, bool /*force*/) {
    // No base folder is ever stored, so both flags leave the search as it is.
    for (const std::string& candidate : baseFolderCandidates()) {
        if (FolderUsable(candidate, existenceOnly)) {
            return nativePath(candidate);
        }
    }
    return UserOwnFolderGet();
}

std::string WorkFolderGet(bool existenceOnly, bool store, bool force) {
    const std::string base = BaseFolderGet(existenceOnly, store, force);
    const std::string work = nativePath(PathJoin(base, "_temp_"));
    if (FolderUsable(work, existenceOnly) || createOneFolder(work)) {
        return work;
    }
    return BaseFolderGet(existenceOnly, store, force);
}

} // namespace wordbm
