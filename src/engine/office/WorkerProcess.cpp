#include "WorkerProcess.h"

#include "WorkerProtocol.h"
#include "engine/word/AutomationError.h"
#include "support/FileOps.h"
#include "support/Strings.h"
#include "support/SystemErrorText.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

extern char** environ;

namespace wordbm::office {

namespace {

const char* const StartFailed = "LibreOffice kann nicht gestartet werden: ";

// LibreOffice's own messages go to $WORDBM_OFFICE_LOG when it names a file, else nowhere:
// a batch of thousands of invoices would otherwise flood the terminal with its warnings.
std::string messageLog() {
    const char* log = std::getenv("WORDBM_OFFICE_LOG");
    return log != nullptr && *log ? log : "/dev/null";
}

bool startsWith(const std::string& text, std::string_view prefix) {
    return text.size() >= prefix.size() && std::string_view(text).substr(0, prefix.size()) == prefix;
}

// The environment for the worker: this one, with TMPDIR pointing into the worker's private folder.
// LibreOffice leaves a folder in TMPDIR behind when it is killed; there it goes with the profile.
std::vector<std::string> workerEnvironment(const std::string& temporaryFolder) {
    std::vector<std::string> variables;
    for (char** variable = environ; *variable != nullptr; ++variable) {
        if (!startsWith(*variable, "TMPDIR=")) {
            variables.emplace_back(*variable);
        }
    }
    variables.push_back("TMPDIR=" + temporaryFolder);
    return variables;
}

std::vector<char*> pointersTo(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    for (auto& text : texts) {
        pointers.push_back(text.data());
    }
    pointers.push_back(nullptr);
    return pointers;
}

WorkerProcess::Result readReply(LineChannel::Status status, const std::string& reply) {
    using Outcome = WorkerProcess::Outcome;
    if (status == LineChannel::Status::TimedOut) {
        return {Outcome::TimedOut, {}, {}};
    }
    if (status == LineChannel::Status::Line && reply == protocol::Ok) {
        return {Outcome::Done, {}, {}};
    }
    const std::string error = std::string(protocol::Error) + " ";
    if (status == LineChannel::Status::Line && startsWith(reply, error)) {
        const std::string rest = reply.substr(error.size());
        const auto blank = rest.find(' ');
        return {Outcome::Refused, rest.substr(0, blank),
                blank == std::string::npos ? "" : rest.substr(blank + 1)};
    }
    return {Outcome::Crashed, {}, reply};
}

// Frees posix_spawn's attribute objects on every way out of spawn().
struct SpawnSetup {
    posix_spawn_file_actions_t actions{};
    posix_spawnattr_t attributes{};
    SpawnSetup() {
        posix_spawn_file_actions_init(&actions);
        posix_spawnattr_init(&attributes);
    }
    ~SpawnSetup() {
        posix_spawn_file_actions_destroy(&actions);
        posix_spawnattr_destroy(&attributes);
    }
    SpawnSetup(const SpawnSetup&) = delete;
    SpawnSetup& operator=(const SpawnSetup&) = delete;
};

// "wordbm-office-<pid of the client>-XXXXXX": a client killed with its workers cannot remove their
// folders; the next client does, once that process has ended.
constexpr std::string_view FolderPrefix = "wordbm-office-";

long clientOf(std::string_view folderName) {
    if (!folderName.starts_with(FolderPrefix)) {
        return 0;
    }
    const auto rest = folderName.substr(FolderPrefix.size());
    const auto dash = rest.find('-');
    if (dash == std::string_view::npos || dash == 0 || dash > 9 ||
        rest.substr(0, dash).find_first_not_of("0123456789") != std::string_view::npos) {
        return 0;
    }
    return std::stol(std::string(rest.substr(0, dash)));
}

void removeFoldersOfEndedClients(const std::string& temporary) {
    std::error_code error;
    for (std::filesystem::directory_iterator entry(temporary, error), end; !error && entry != end;
         entry.increment(error)) {
        const long client = clientOf(entry->path().filename().string());
        struct stat status {};
        if (client <= 0 || client == ::getpid() || ::kill(static_cast<pid_t>(client), 0) == 0 ||
            errno != ESRCH || ::lstat(entry->path().c_str(), &status) != 0 || !S_ISDIR(status.st_mode) ||
            status.st_uid != ::geteuid()) {
            continue;
        }
        std::error_code ignored;
        std::filesystem::remove_all(entry->path(), ignored);
    }
}

} // namespace

WorkerProcess::WorkerProcess(const std::string& program, std::chrono::milliseconds startTimeout) {
    try {
        makeProfileFolder();
        spawn(program);
        awaitReady(startTimeout);
    } catch (...) {
        stop();
        throw;
    }
}

WorkerProcess::~WorkerProcess() {
    stop();
}

WorkerProcess::Result WorkerProcess::exportPdf(const std::string& sourceUrl, const std::string& targetUrl,
                                               bool pdfA, std::chrono::milliseconds timeout) {
    ++documents_;
    const std::string request =
        std::string(pdfA ? protocol::PdfA : protocol::Pdf) + " " + sourceUrl + " " + targetUrl;
    Result result{Outcome::Crashed, {}, "the worker is gone"};
    if (channel_->send(request)) {
        std::string reply;
        const auto status = channel_->receive(reply, std::chrono::steady_clock::now() + timeout);
        result = readReply(status, reply);
    }
    broken_ = result.outcome == Outcome::Crashed || result.outcome == Outcome::TimedOut;
    return result;
}

void WorkerProcess::makeProfileFolder() {
    const auto temporary = std::filesystem::temp_directory_path();
    removeFoldersOfEndedClients(temporary.string());
    std::string pattern =
        (temporary / (std::string(FolderPrefix) + std::to_string(::getpid()) + "-XXXXXX")).string();
    if (::mkdtemp(pattern.data()) == nullptr) {
        throw AutomationError(StartFailed + std::string("kein temporärer Ordner (") +
                              SystemErrorText::of(errno) + ")");
    }
    profileFolder_ = pattern;
}

void WorkerProcess::spawn(const std::string& program) {
    if (program.empty()) {
        throw AutomationError(StartFailed + std::string("das Hilfsprogramm wordbm-office-worker fehlt."));
    }
    int ends[2];
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0) {
        throw AutomationError(StartFailed + SystemErrorText::of(errno));
    }
    channel_ = std::make_unique<LineChannel>(ends[0]);
    // Without a log of the user's choice, the worker's messages go into its own folder, to be
    // quoted when it ends during start-up.
    const std::string chosen = messageLog();
    logPath_ = chosen == "/dev/null" ? profileFolder_ + "/worker.log" : chosen;
    const std::string& log = logPath_;
    SpawnSetup setup;
    posix_spawn_file_actions_adddup2(&setup.actions, ends[1], STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&setup.actions, ends[1], STDOUT_FILENO);
    posix_spawn_file_actions_addopen(&setup.actions, STDERR_FILENO, log.c_str(),
                                     O_WRONLY | O_CREAT | O_APPEND, 0644);
    // The worker must not inherit the signals that the calling thread happens to block.
    sigset_t none;
    sigemptyset(&none);
    posix_spawnattr_setsigmask(&setup.attributes, &none);
    posix_spawnattr_setflags(&setup.attributes, POSIX_SPAWN_SETSIGMASK);

    std::vector<std::string> arguments{program, std::string(protocol::ProfileOption),
                                       profileFolder_ + "/profile"};
    std::vector<std::string> variables = workerEnvironment(profileFolder_);
    const int error = ::posix_spawn(&pid_, program.c_str(), &setup.actions, &setup.attributes,
                                    pointersTo(arguments).data(), pointersTo(variables).data());
    ::close(ends[1]);
    if (error != 0) {
        pid_ = -1;
        throw AutomationError(StartFailed + program + " (" + SystemErrorText::of(error) + ")");
    }
}

void WorkerProcess::awaitReady(std::chrono::milliseconds timeout) {
    std::string line;
    const auto status = channel_->receive(line, std::chrono::steady_clock::now() + timeout);
    if (status == LineChannel::Status::TimedOut) {
        throw AutomationError(StartFailed + std::string("keine Antwort (Zeitüberschreitung)."));
    }
    if (status == LineChannel::Status::Closed) {
        throw EndedAtStart(StartFailed + std::string("das Hilfsprogramm wurde beendet") + endReport());
    }
    if (line != protocol::Ready) {
        throw AutomationError(StartFailed + line);
    }
}

std::string WorkerProcess::endReport() {
    int status = 0;
    pid_t ended = 0;
    // It closed its end; give it a moment to finish ending before it is asked how.
    for (int attempt = 0; attempt < 40 && ended == 0; ++attempt) {
        ended = ::waitpid(pid_, &status, WNOHANG);
        if (ended == 0) {
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
        }
    }
    std::string report;
    if (ended == pid_) {
        pid_ = -1;
        report = WIFEXITED(status)     ? " (Exit-Status " + std::to_string(WEXITSTATUS(status)) + ")"
                 : WIFSIGNALED(status) ? " (Signal " + std::to_string(WTERMSIG(status)) + ")"
                                       : std::string();
    }
    report += ".";
    std::string text = readFileBytes(logPath_).value_or(std::string());
    std::vector<std::string> lines;
    for (const std::string& line : split(text, "\n")) {
        if (!trim(line).empty()) {
            lines.push_back(trim(line).substr(0, 300));
        }
    }
    const std::size_t first = lines.size() > 5 ? lines.size() - 5 : 0;
    for (std::size_t i = first; i < lines.size(); ++i) {
        report += "\r\n" + lines[i];
    }
    return report;
}

void WorkerProcess::stop() noexcept {
    // The worker keeps nothing worth saving (its profile is thrown away), so it is not asked to
    // leave: LibreOfficeKit could not be shut down cleanly anyway.
    if (pid_ > 0) {
        ::kill(pid_, SIGKILL);
        while (::waitpid(pid_, nullptr, 0) < 0 && errno == EINTR) {
        }
        pid_ = -1;
    }
    channel_.reset();
    if (!profileFolder_.empty()) {
        std::error_code ignored;
        std::filesystem::remove_all(profileFolder_, ignored);
        profileFolder_.clear();
    }
}

} // namespace wordbm::office
