// wordbm-office-worker: hosts LibreOffice for the PDF export of WordBM, one process per pool slot.
// Usage: wordbm-office-worker --profile <own profile folder>
// Requests come on stdin, answers go to stdout (WorkerProtocol.h).
#include "JobLoop.h"
#include "LokHost.h"
#include "ProfileSettings.h"
#include "engine/office/FileUrl.h"
#include "engine/office/WorkerProtocol.h"

#include <csignal>
#include <cstdlib>
#include <exception>
#include <fcntl.h>
#include <iostream>
#include <string>
#include <unistd.h>

namespace {

const char* const DefaultInstallPath = "/usr/lib/libreoffice/program";

std::string profileFolder(int argc, char** argv) {
    for (int i = 1; i + 1 < argc; ++i) {
        if (wordbm::office::protocol::ProfileOption == argv[i]) {
            return argv[i + 1];
        }
    }
    return {};
}

// LibreOffice writes to stdout now and then; the answers get a descriptor of their own and
// everything else on stdout ends up with stderr.
int takeReplyChannel() {
    const int reply = ::fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 3);
    ::dup2(STDERR_FILENO, STDOUT_FILENO);
    return reply;
}

} // namespace

int main(int argc, char** argv) {
    using namespace wordbm::office;
    // A client that went away shows as a failed write, not as a signal.
    std::signal(SIGPIPE, SIG_IGN);
    const int reply = takeReplyChannel();
    const std::string profile = profileFolder(argc, argv);
    if (reply < 0 || profile.empty()) {
        std::cerr << "usage: wordbm-office-worker " << protocol::ProfileOption << " <profile folder>\n";
        ::_exit(2);
    }
    if (!writeProfileSettings(profile)) {
        writeLine(reply, std::string(protocol::Failed) + " cannot write the profile settings in " + profile);
        ::_exit(1);
    }
    const char* install = std::getenv("WORDBM_LIBREOFFICE_PROGRAM");
    try {
        LokHost host(install != nullptr ? install : DefaultInstallPath, fileUrl(profile));
        if (writeLine(reply, protocol::Ready)) {
            JobLoop(host, reply).run(std::cin);
        }
    } catch (const std::exception& e) {
        writeLine(reply, std::string(protocol::Failed) + " " + e.what());
    }
    // Destroying LibreOfficeKit 7.4 aborts (double free); nothing is left to flush.
    ::_exit(0);
}
