#pragma once

#include <chrono>
#include <string>
#include <string_view>

namespace wordbm::office {

// One end of a connected stream socket that carries lines, owned and closed by this object.
// Writing never raises SIGPIPE: a peer that is gone shows as a failed send.
class LineChannel {
public:
    enum class Status { Line, Closed, TimedOut };
    using Deadline = std::chrono::steady_clock::time_point;

    explicit LineChannel(int fd) : fd_(fd) {}
    ~LineChannel();
    LineChannel(const LineChannel&) = delete;
    LineChannel& operator=(const LineChannel&) = delete;

    // Sends text and a line break; false when the peer has gone.
    bool send(std::string_view text);
    // The next line, without its line break, into line; Closed at end of input or on an error.
    Status receive(std::string& line, Deadline deadline);

private:
    bool takeBufferedLine(std::string& line);

    int fd_;
    std::string buffer_;
};

} // namespace wordbm::office
