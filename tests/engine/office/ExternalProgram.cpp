#include "ExternalProgram.h"

#include <cerrno>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;

ProgramOutput runProgram(const std::vector<std::string>& argv) {
    ProgramOutput result;
    int pipeEnds[2];
    if (::pipe2(pipeEnds, O_CLOEXEC) != 0) {
        return result;
    }
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, pipeEnds[1], STDOUT_FILENO);
    std::vector<char*> arguments;
    for (const auto& argument : argv) {
        arguments.push_back(const_cast<char*>(argument.c_str()));
    }
    arguments.push_back(nullptr);
    pid_t pid = -1;
    const int error = ::posix_spawnp(&pid, arguments[0], &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    ::close(pipeEnds[1]);
    char chunk[4096];
    ssize_t got = 0;
    while ((got = ::read(pipeEnds[0], chunk, sizeof chunk)) > 0 || (got < 0 && errno == EINTR)) {
        if (got > 0) {
            result.standardOutput.append(chunk, static_cast<std::size_t>(got));
        }
    }
    ::close(pipeEnds[0]);
    int status = 0;
    if (error == 0 && ::waitpid(pid, &status, 0) == pid && WIFEXITED(status)) {
        result.exitStatus = WEXITSTATUS(status);
    }
    return result;
}

std::string pdfText(const std::string& pdfPath) {
    return runProgram({"pdftotext", "-enc", "UTF-8", pdfPath, "-"}).standardOutput;
}
