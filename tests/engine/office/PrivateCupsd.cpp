#include "PrivateCupsd.h"

#include "ExternalProgram.h"

#include <csignal>
#include <fcntl.h>
#include <fstream>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

extern char** environ;

namespace fs = std::filesystem;

namespace {

const char* const Cupsd = "/usr/sbin/cupsd";
const char* const CupsPdfBackend = "/usr/lib/cups/backend/cups-pdf";
const char* const CupsPdfPpd = "/usr/share/ppd/cups-pdf/CUPS-PDF_opt.ppd";

bool writeFile(const fs::path& path, const std::string& text) {
    std::ofstream out(path);
    out << text;
    return static_cast<bool>(out.flush());
}

// Anyone may do anything: the socket lies in a folder of this test only.
std::string daemonSettings(const std::string& socket) {
    return "LogLevel debug\nListen " + socket +
           "\nBrowsing No\nWebInterface No\nDefaultAuthType None\n"
           "<Location />\n  Order allow,deny\n  Allow all\n</Location>\n"
           "<Policy default>\n  <Limit All>\n    Order allow,deny\n    Allow all\n  </Limit>\n</Policy>\n";
}

std::string fileSettings(const fs::path& root) {
    const std::string base = root.string();
    return "ServerRoot " + base + "/conf\nRequestRoot " + base + "/spool\nTempDir " + base +
           "/tmp\nCacheDir " + base + "/cache\nStateDir " + base + "/state\nErrorLog " + base +
           "/log/error_log\nAccessLog " + base + "/log/access_log\nPageLog " + base +
           "/log/page_log\nSandboxing Relaxed\n";
}

} // namespace

PrivateCupsd::PrivateCupsd() {
    socket_ = folder_ / "cups.sock";
    if (::geteuid() != 0) {
        unavailable_ = "cupsd runs the cups-pdf backend only when started as root";
        return;
    }
    if (::access(Cupsd, X_OK) != 0 || ::access(CupsPdfBackend, F_OK) != 0) {
        unavailable_ = "cupsd or the cups-pdf backend is not installed";
        return;
    }
    setupError_ = writeConfiguration();
    if (!setupError_.empty()) {
        return;
    }
    unavailable_ = startDaemon();
    if (unavailable_.empty()) {
        setupError_ = addQueue();
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

std::string PrivateCupsd::writeConfiguration() {
    const fs::path root = folder_.path();
    for (const char* sub : {"conf", "spool", "tmp", "cache", "state", "log", "out", "cups-pdf", "client"}) {
        fs::create_directory(root / sub);
    }
    // Filters run as the unprivileged lp user and need to reach the temporary folder.
    fs::permissions(root, fs::perms::owner_all | fs::perms::group_read | fs::perms::group_exec |
                              fs::perms::others_read | fs::perms::others_exec);
    fs::permissions(root / "tmp", fs::perms::all | fs::perms::sticky_bit);
    if (!writeFile(root / "conf" / "cupsd.conf", daemonSettings(socket_)) ||
        !writeFile(root / "conf" / "cups-files.conf", fileSettings(root))) {
        return "cannot write the cupsd settings";
    }
    // The device URI cups-pdf:/<instance> makes cups-pdf read /etc/cups/cups-pdf-<instance>.conf.
    const std::string folderName = root.filename().string();
    const std::string instance =
        "wordbm" + std::to_string(::getpid()) + "-" + folderName.substr(folderName.size() - 6);
    cupsPdfSettings_ = "/etc/cups/cups-pdf-" + instance + ".conf";
    const std::string settings = "Out " + (root / "out").string() + "\nSpool " +
                                 (root / "cups-pdf").string() + "\nLog " + (root / "log").string() +
                                 "\nAnonDirName " + (root / "out").string() + "\nLogType 7\n";
    if (!writeFile(cupsPdfSettings_, settings)) {
        cupsPdfSettings_.clear();
        return "cannot write the cups-pdf settings into /etc/cups";
    }
    queueUri_ = "cups-pdf:/" + instance;
    return {};
}

std::string PrivateCupsd::startDaemon() {
    const fs::path conf = folder_.path() / "conf";
    const std::string daemonConf = (conf / "cupsd.conf").string();
    const std::string filesConf = (conf / "cups-files.conf").string();
    const std::string log = (folder_.path() / "log" / "cupsd.out").string();
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, log.c_str(), O_WRONLY | O_CREAT | O_TRUNC,
                                     0644);
    posix_spawn_file_actions_adddup2(&actions, STDOUT_FILENO, STDERR_FILENO);
    std::vector<char*> argv{const_cast<char*>(Cupsd),
                            const_cast<char*>("-f"),
                            const_cast<char*>("-c"),
                            const_cast<char*>(daemonConf.c_str()),
                            const_cast<char*>("-s"),
                            const_cast<char*>(filesConf.c_str()),
                            nullptr};
    const int error = ::posix_spawn(&pid_, Cupsd, &actions, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0) {
        pid_ = -1;
        return "cupsd does not start";
    }
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    while (!listening()) {
        int status = 0;
        if (::waitpid(pid_, &status, WNOHANG) == pid_) {
            pid_ = -1;
            return "cupsd ended at once: " + readBytes(log) + errorLogTail();
        }
        if (std::chrono::steady_clock::now() > deadline) {
            return "cupsd does not listen on its socket";
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
    return {};
}

bool PrivateCupsd::listening() const {
    const int fd = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    socket_.copy(address.sun_path, sizeof address.sun_path - 1);
    const bool connected = ::connect(fd, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    ::close(fd);
    return connected;
}

std::string PrivateCupsd::addQueue() {
    const auto added =
        runProgram({"lpadmin", "-h", socket_, "-p", queue_, "-E", "-v", queueUri_, "-P", CupsPdfPpd});
    return added.exitStatus == 0 ? std::string() : "lpadmin cannot add the cups-pdf queue" + errorLogTail();
}

bool PrivateCupsd::makeQueueDefault() const {
    return runProgram({"lpadmin", "-h", socket_, "-d", queue_}).exitStatus == 0;
}

bool PrivateCupsd::jobsPending() const {
    return !runProgram({"lpstat", "-h", socket_, "-o"}).standardOutput.empty();
}

std::string PrivateCupsd::waitForPrintedPdf(std::chrono::seconds patience) const {
    const auto deadline = std::chrono::steady_clock::now() + patience;
    while (std::chrono::steady_clock::now() < deadline) {
        for (const auto& entry : fs::directory_iterator(outputFolder())) {
            if (entry.path().extension() == ".pdf" && !jobsPending()) {
                return entry.path().string();
            }
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
    }
    return {};
}

std::string PrivateCupsd::errorLogTail() const {
    const std::string log = readBytes((folder_.path() / "log" / "error_log").string());
    return "\n--- cupsd error_log (end) ---\n" + log.substr(log.size() > 4000 ? log.size() - 4000 : 0);
}
