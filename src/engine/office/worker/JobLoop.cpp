#include "JobLoop.h"

#include "LokHost.h"
#include "engine/office/WorkerProtocol.h"

#include <cerrno>
#include <unistd.h>
#include <vector>

namespace wordbm::office {

namespace {

std::vector<std::string_view> words(std::string_view line) {
    std::vector<std::string_view> result;
    while (!line.empty()) {
        const auto start = line.find_first_not_of(' ');
        if (start == std::string_view::npos) {
            break;
        }
        line.remove_prefix(start);
        const auto end = line.find(' ');
        result.push_back(line.substr(0, end));
        line.remove_prefix(end == std::string_view::npos ? line.size() : end);
    }
    return result;
}

std::string joined(std::string_view first, std::string_view second, std::string_view third = {}) {
    std::string line(first);
    line += ' ';
    line += second;
    if (!third.empty()) {
        line += ' ';
        line += third;
    }
    return line;
}

} // namespace

void JobLoop::run(std::istream& requests) {
    std::string request;
    while (std::getline(requests, request)) {
        if (!writeLine(replyFd_, answer(request))) {
            return;
        }
    }
}

std::string JobLoop::answer(std::string_view request) {
    const auto parts = words(request);
    const bool pdf = parts.size() == 3 && parts[0] == protocol::Pdf;
    const bool pdfA = parts.size() == 3 && parts[0] == protocol::PdfA;
    if (!pdf && !pdfA) {
        return joined(protocol::Error, protocol::BadRequest, request);
    }
    const auto failure = host_.exportPdf(std::string(parts[1]), std::string(parts[2]), pdfA);
    if (failure) {
        return joined(protocol::Error, failure->kind, failure->detail);
    }
    return std::string(protocol::Ok);
}

bool writeLine(int fd, std::string_view text) {
    std::string line(text);
    for (char& c : line) {
        if (c == '\n' || c == '\r') {
            c = ' ';
        }
    }
    line += '\n';
    std::string_view rest = line;
    while (!rest.empty()) {
        const ssize_t written = ::write(fd, rest.data(), rest.size());
        if (written < 0 && errno == EINTR) {
            continue;
        }
        if (written <= 0) {
            return false;
        }
        rest.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

} // namespace wordbm::office
