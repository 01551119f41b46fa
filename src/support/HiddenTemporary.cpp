#include "support/HiddenTemporary.h"

#include "support/SessionFolder.h"

#include <atomic>
#include <cerrno>
#include <csignal>
#include <filesystem>
#include <mutex>
#include <set>
#include <sys/stat.h>
#include <unistd.h>

namespace wordbm {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view Prefix = ".wbm-";
constexpr std::string_view Suffix = ".tmp";

const std::string& thisHost() {
    static const std::string host = SessionFolder::hostName();
    return host;
}

bool allDigits(std::string_view text) {
    return !text.empty() && text.size() <= 9 &&
           text.find_first_not_of("0123456789") == std::string_view::npos;
}

bool processEnded(long pid) {
    return pid > 0 && pid != ::getpid() && ::kill(static_cast<pid_t>(pid), 0) != 0 && errno == ESRCH;
}

// Whether this process already cleaned `folder`: a merge writes hundreds of files into one folder,
// and reading the folder each time would cost more than the writing.
bool firstVisit(const std::string& folder) {
    static std::mutex mutex;
    static std::set<std::string> visited;
    const std::lock_guard lock(mutex);
    return visited.insert(folder).second;
}

} // namespace

long HiddenTemporary::processOf(const std::string& fileName) {
    const std::string_view name(fileName);
    if (!name.starts_with(Prefix) || !name.ends_with(Suffix)) {
        return 0;
    }
    // "<host>-<pid>-<n>"; the host may hold dashes itself, so the numbers are read from the end.
    const auto middle = name.substr(Prefix.size(), name.size() - Prefix.size() - Suffix.size());
    const auto lastDash = middle.rfind('-');
    if (lastDash == std::string_view::npos || !allDigits(middle.substr(lastDash + 1))) {
        return 0;
    }
    const auto pidDash = middle.substr(0, lastDash).rfind('-');
    if (pidDash == std::string_view::npos || middle.substr(0, pidDash) != thisHost()) {
        return 0;
    }
    const auto pid = middle.substr(pidDash + 1, lastDash - pidDash - 1);
    return allDigits(pid) ? std::stol(std::string(pid)) : 0;
}

int HiddenTemporary::removeStale(const std::string& folder) {
    int removed = 0;
    std::error_code error;
    for (fs::directory_iterator entry(folder.empty() ? "." : folder, error), end; !error && entry != end;
         entry.increment(error)) {
        const auto path = entry->path();
        struct stat status {};
        if (!processEnded(processOf(path.filename().string())) || ::lstat(path.c_str(), &status) != 0 ||
            !S_ISREG(status.st_mode) || status.st_uid != ::geteuid()) {
            continue;
        }
        if (::unlink(path.c_str()) == 0) {
            ++removed;
        }
    }
    return removed;
}

std::string HiddenTemporary::besideIn(const std::string& folder) {
    if (firstVisit(folder)) {
        removeStale(folder);
    }
    static std::atomic<unsigned long> counter{0};
    const std::string name = std::string(Prefix) + thisHost() + "-" + std::to_string(::getpid()) + "-" +
                             std::to_string(++counter) + std::string(Suffix);
    return (fs::path(folder) / name).string();
}

} // namespace wordbm
