#include "LineChannel.h"

#include <algorithm>
#include <cerrno>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace wordbm::office {

LineChannel::~LineChannel() {
    if (fd_ >= 0) {
        ::close(fd_);
    }
}

bool LineChannel::send(std::string_view text) {
    std::string line(text);
    line += '\n';
    std::string_view rest = line;
    while (!rest.empty()) {
        const ssize_t sent = ::send(fd_, rest.data(), rest.size(), MSG_NOSIGNAL);
        if (sent < 0 && errno == EINTR) {
            continue;
        }
        if (sent <= 0) {
            return false;
        }
        rest.remove_prefix(static_cast<std::size_t>(sent));
    }
    return true;
}

LineChannel::Status LineChannel::receive(std::string& line, Deadline deadline) {
    while (!takeBufferedLine(line)) {
        const auto left =
            std::chrono::ceil<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now());
        if (left.count() <= 0) {
            return Status::TimedOut;
        }
        pollfd watched{fd_, POLLIN, 0};
        const int ready = ::poll(&watched, 1, static_cast<int>(std::min<long long>(left.count(), 60'000)));
        if (ready < 0 && errno != EINTR) {
            return Status::Closed;
        }
        if (ready <= 0) {
            continue;
        }
        char chunk[4096];
        const ssize_t got = ::read(fd_, chunk, sizeof chunk);
        if (got < 0 && errno == EINTR) {
            continue;
        }
        if (got <= 0) {
            return Status::Closed;
        }
        buffer_.append(chunk, static_cast<std::size_t>(got));
    }
    return Status::Line;
}

bool LineChannel::takeBufferedLine(std::string& line) {
    const auto end = buffer_.find('\n');
    if (end == std::string::npos) {
        return false;
    }
    line.assign(buffer_, 0, end);
    buffer_.erase(0, end + 1);
    return true;
}

} // namespace wordbm::office
