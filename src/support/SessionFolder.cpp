#include "support/SessionFolder.h"

#include "support/Folders.h"

#include <cerrno>
#include <csignal>
#include <filesystem>
#include <mutex>
#include <random>
#include <set>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace wordbm {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view Prefix = "wbm-";

std::string randomTag() {
    static constexpr char Letters[] = "abcdefghijklmnopqrstuvwxyz0123456789";
    std::random_device device;
    std::uniform_int_distribution<std::size_t> pick(0, sizeof(Letters) - 2);
    std::string tag;
    for (int i = 0; i < 6; ++i) {
        tag += Letters[pick(device)];
    }
    return tag;
}

// The folders made, each with the process that made it; each is removed at the normal end of
// that process. A forked child that ends through exit() must not take its parent's folders.
class Made {
public:
    ~Made() {
        const std::lock_guard lock(mutex_);
        for (const auto& [folder, maker] : folders_) {
            if (maker == ::getpid()) {
                std::error_code error;
                fs::remove_all(folder, error);
            }
        }
    }
    void add(const std::string& folder) {
        const std::lock_guard lock(mutex_);
        folders_.emplace(folder, ::getpid());
    }

private:
    std::mutex mutex_;
    std::set<std::pair<std::string, pid_t>> folders_;
};

Made& made() {
    static Made folders;
    return folders;
}

// The process id in "wbm-<host>-<pid>-<tag>" when the host is this one; 0 otherwise.
pid_t processOf(const std::string& folderName) {
    const std::string host = std::string(Prefix) + SessionFolder::hostName() + "-";
    if (!folderName.starts_with(host)) {
        return 0;
    }
    const std::string rest = folderName.substr(host.size());
    const auto dash = rest.find('-');
    if (dash == std::string::npos || dash == 0 || dash > 9) {
        return 0;
    }
    pid_t pid = 0;
    for (char c : rest.substr(0, dash)) {
        if (c < '0' || c > '9') {
            return 0;
        }
        pid = pid * 10 + (c - '0');
    }
    return pid;
}

bool processEnded(pid_t pid) {
    return pid > 0 && pid != ::getpid() && ::kill(pid, 0) != 0 && errno == ESRCH;
}

} // namespace

const std::string& SessionFolder::name() {
    // Made anew in a forked child, which is a process, and so a session, of its own.
    static std::mutex mutex;
    static pid_t namedFor = 0;
    static std::string folderName;
    const std::lock_guard lock(mutex);
    if (namedFor != ::getpid()) {
        namedFor = ::getpid();
        folderName = std::string(Prefix) + hostName() + "-" + std::to_string(namedFor) + "-" + randomTag();
    }
    return folderName;
}

void SessionFolder::removeStale(const std::string& workFolder) {
    std::error_code error;
    for (fs::directory_iterator entry(workFolder, error), end; !error && entry != end;
         entry.increment(error)) {
        const std::string folderName = entry->path().filename().string();
        std::error_code statusError;
        if (entry->is_directory(statusError) && !entry->is_symlink(statusError) &&
            processEnded(processOf(folderName))) {
            std::error_code removeError;
            fs::remove_all(entry->path(), removeError);
        }
    }
}

std::string SessionFolder::get() {
    // Under the working folder, or, where no folder of our own can be made there, under the
    // user's own folder: never straight into a folder that others may read.
    for (const std::string& parent : {WorkFolderGet(false, false, false), UserOwnFolderGet()}) {
        if (parent.empty()) {
            continue;
        }
        const std::string folder = parent + "/" + name();
        struct stat existing {};
        if (::lstat(folder.c_str(), &existing) == 0) {
            if (S_ISDIR(existing.st_mode) && existing.st_uid == ::geteuid()) {
                return folder;
            }
            continue;
        }
        removeStale(parent);
        if (::mkdir(folder.c_str(), 0700) == 0) {
            made().add(folder);
            return folder;
        }
    }
    return UserOwnFolderGet();
}

std::string SessionFolder::hostName() {
    char buffer[256] = {};
    if (::gethostname(buffer, sizeof buffer - 1) != 0 || buffer[0] == '\0') {
        return "host";
    }
    std::string host(buffer);
    for (char& c : host) {
        if (c == '/' || c == '\\') {
            c = '_';
        }
    }
    return host;
}

} // namespace wordbm
