#include "PrivateCupsd.h"

#include "ExternalProgram.h"
#include "support/FileOps.h"

#include <csignal>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

extern char** environ;

namespace fs = std::filesystem;

namespace {

const char* const Cupsd = "/usr/sbin/cupsd";

// Anyone may do anything: the socket lies in a folder of this test only.
const char* const AccessRules = "Browsing No\nWebInterface No\nDefaultAuthType None\n"
                                "<Location />\n  Order allow,deny\n  Allow all\n</Location>\n"
                                "<Policy default>\n  <Limit All>\n    Order allow,deny\n    Allow all\n"
                                "  </Limit>\n</Policy>\n";

std::string folderSettings(const std::string& base) {
    return "ServerRoot " + base + "/conf\nRequestRoot " + base + "/spool\nTempDir " + base +
           "/tmp\nCacheDir " + base + "/cache\nStateDir " + base + "/state\nErrorLog " + base +
           "/log/error_log\nAccessLog " + base + "/log/access_log\nPageLog " + base +
           "/log/page_log\nSandboxing Relaxed\n";
}

bool write(const fs::path& path, const std::string& text) {
    return wordbm::writeFileAtomic(path.string(), text).empty();
}

} // namespace

PrivateCupsd::PrivateCupsd() : socket_(folder_ / "cups.sock") {
    if (::geteuid() != 0) {
        unavailable_ = "cupsd runs the cups-pdf backend only when started as root";
    } else if (::access(Cupsd, X_OK) != 0 || ::access("/usr/lib/cups/backend/cups-pdf", F_OK) != 0) {
        unavailable_ = "cupsd or the cups-pdf backend is not installed";
    } else if (runProgram({"unshare", "--mount", "--propagation", "private", "true"}).exitStatus != 0) {
        unavailable_ = "cups-pdf reads its settings from /etc/cups only, and no mount namespace can give it "
                       "a private /etc/cups here (unshare --mount refused)";
    } else if (setupError_ = writeSettings(); setupError_.empty()) {
        unavailable_ = startDaemon();
    }
    if (pid_ > 0 && runProgram({"lpadmin", "-h", socket_, "-p", queue_, "-E", "-v", deviceUri_, "-P",
                                "/usr/share/ppd/cups-pdf/CUPS-PDF_opt.ppd"})
                            .exitStatus != 0) {
        setupError_ = "lpadmin cannot add the cups-pdf queue" + errorLogTail();
    }
}

PrivateCupsd::~PrivateCupsd() {
    if (pid_ > 0) {
        ::kill(pid_, SIGTERM);
        ::waitpid(pid_, nullptr, 0);
    }
    if (!cupsPdfSettings_.empty()) {
        std::error_code ignored;
        fs::remove(cupsPdfSettings_, ignored);
    }
}

std::string PrivateCupsd::writeSettings() {
    const fs::path root = folder_.path();
    for (const char* sub : {"conf", "spool", "tmp", "cache", "state", "log", "out", "cups-pdf", "client"}) {
        fs::create_directory(root / sub);
    }
    // Filters run as the unprivileged lp user and must reach the temporary folder.
    fs::permissions(root, fs::perms::owner_all | fs::perms::group_exec | fs::perms::others_exec);
    fs::permissions(root / "tmp", fs::perms::all | fs::perms::sticky_bit);
    // The device URI cups-pdf:/<instance> makes cups-pdf read /etc/cups/cups-pdf-<instance>.conf. The
    // system's folder is not ours to change: cupsd runs in a mount namespace of its own where a copy
    // of /etc/cups, holding that file, lies over the real one (see startDaemon).
    const std::string instance = "wordbm" + std::to_string(::getpid()) + "-" + root.filename().string();
    deviceUri_ = "cups-pdf:/" + instance;
    fs::create_directory(root / "etc-cups");
    std::error_code ignored;
    for (const auto& entry : fs::directory_iterator("/etc/cups", ignored)) {
        if (entry.is_regular_file(ignored)) {
            fs::copy_file(entry.path(), root / "etc-cups" / entry.path().filename(), ignored);
        }
    }
    cupsPdfSettings_ = (root / "etc-cups" / ("cups-pdf-" + instance + ".conf")).string();
    const std::string out = (root / "out").string();
    if (!write(root / "conf" / "cupsd.conf", "LogLevel debug\nListen " + socket_ + "\n" + AccessRules) ||
        !write(root / "conf" / "cups-files.conf", folderSettings(root.string())) ||
        !write(cupsPdfSettings_, "Out " + out + "\nAnonDirName " + out + "\nSpool " +
                                     (root / "cups-pdf").string() + "\nLog " + (root / "log").string() +
                                     "\n")) {
        return "cannot write the cupsd and cups-pdf settings";
    }
    return {};
}

std::string PrivateCupsd::startDaemon() {
    const std::string conf = (folder_.path() / "conf").string();
    const std::string log = (folder_.path() / "log" / "cupsd.out").string();
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, log.c_str(), O_WRONLY | O_CREAT | O_TRUNC,
                                     0644);
    const std::string daemonConf = conf + "/cupsd.conf", filesConf = conf + "/cups-files.conf";
    const std::string etcCups = (folder_.path() / "etc-cups").string();
    // unshare and sh each replace themselves, so pid_ ends up being cupsd's.
    const char* argv[] = {"unshare",
                          "--mount",
                          "--propagation",
                          "private",
                          "--",
                          "/bin/sh",
                          "-c",
                          "mount --bind \"$0\" /etc/cups && exec \"$@\"",
                          etcCups.c_str(),
                          Cupsd,
                          "-f",
                          "-c",
                          daemonConf.c_str(),
                          "-s",
                          filesConf.c_str(),
                          nullptr};
    const int error = ::posix_spawnp(&pid_, "unshare", &actions, nullptr, const_cast<char**>(argv), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0) {
        pid_ = -1;
        return "cupsd does not start";
    }
    for (const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(30); !running();) {
        if (::waitpid(pid_, nullptr, WNOHANG) == pid_ || std::chrono::steady_clock::now() > deadline) {
            ::kill(pid_, SIGKILL);
            ::waitpid(pid_, nullptr, 0);
            pid_ = -1;
            return "cupsd does not come up: " + wordbm::readFileBytes(log).value_or("") + errorLogTail();
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
    return {};
}

bool PrivateCupsd::running() const {
    return runProgram({"lpstat", "-h", socket_, "-r"}).standardOutput == "scheduler is running\n";
}

bool PrivateCupsd::makeQueueDefault() const {
    return runProgram({"lpadmin", "-h", socket_, "-d", queue_}).exitStatus == 0;
}

std::string PrivateCupsd::waitForPrintedPdf(std::chrono::seconds patience) const {
    for (const auto deadline = std::chrono::steady_clock::now() + patience;
         std::chrono::steady_clock::now() < deadline;) {
        // A job still listed may still be writing its PDF.
        const bool jobsPending = !runProgram({"lpstat", "-h", socket_, "-o"}).standardOutput.empty();
        for (const auto& entry : fs::directory_iterator(folder_.path() / "out")) {
            if (entry.path().extension() == ".pdf" && !jobsPending) {
                return entry.path().string();
            }
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
    }
    return {};
}

std::string PrivateCupsd::errorLogTail() const {
    const std::string log =
        wordbm::readFileBytes((folder_.path() / "log" / "error_log").string()).value_or("");
    return "\n--- cupsd error_log (end) ---\n" + log.substr(log.size() > 4000 ? log.size() - 4000 : 0);
}
