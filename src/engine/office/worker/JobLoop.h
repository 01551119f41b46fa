#pragma once

#include <istream>
#include <string>
#include <string_view>

namespace wordbm::office {

class LokHost;

// Serves the requests of WorkerProtocol.h one after the other: reads a line, converts, answers.
class JobLoop {
public:
    JobLoop(LokHost& host, int replyFd) : host_(host), replyFd_(replyFd) {}

    // Returns when the input ends or the client can no longer be answered.
    void run(std::istream& requests);

    // The answer to one request line (without its line break).
    std::string answer(std::string_view request);

private:
    LokHost& host_;
    int replyFd_;
};

// Writes text and a line break to fd, line breaks inside text turned into blanks so that a
// reason from LibreOffice cannot break the protocol. False when the reader is gone.
bool writeLine(int fd, std::string_view text);

} // namespace wordbm::office
