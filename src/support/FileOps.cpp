#include "support/FileOps.h"

#include "support/AtomicFile.h"
#include "support/Cp1252.h"
#include "support/ReadFile.h"
#include "support/SystemErrorText.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace wordbm {

namespace {

constexpr std::string_view LineBreak = "\r\n";

// Far beyond any control file or form; a larger "file" is a mistake, not something to load.
constexpr std::size_t MaxFileBytes = std::size_t{1} << 30;
constexpr std::size_t ChunkBytes = std::size_t{1} << 16;

bool validPath(const std::string& path) {
    return !path.empty() && path.find('\0') == std::string::npos;
}

std::error_code writeBytesAtomic(const std::string& path, std::string_view bytes) {
    AtomicFile file(path);
    std::error_code error = file.open();
    if (!error) {
        error = file.write(bytes);
    }
    return error ? error : file.commit();
}

// Streams the source into the atomic target, so that a copy needs no more memory than a chunk.
std::error_code copyFile(const std::string& source, const std::string& target) {
    ReadFile in(source);
    if (in.error()) {
        return in.error();
    }
    AtomicFile out(target);
    if (const auto error = out.open()) {
        return error;
    }
    std::array<char, ChunkBytes> chunk{};
    for (;;) {
        const auto got = in.readSome(chunk.data(), chunk.size());
        if (!got) {
            return in.error();
        }
        if (*got == 0) {
            return out.commit();
        }
        if (const auto error = out.write(std::string_view(chunk.data(), *got))) {
            return error;
        }
    }
}

} // namespace

std::optional<std::string> readFileBytes(const std::string& path) {
    ReadFile in(path);
    if (in.error()) {
        return std::nullopt;
    }
    std::string bytes;
    bytes.reserve(std::min(in.sizeHint(), MaxFileBytes));
    if (!in.readAll(bytes, MaxFileBytes)) {
        return std::nullopt;
    }
    return bytes;
}

std::optional<std::string> readAnsiText(const std::string& path) {
    ReadFile in(path);
    if (in.error()) {
        return std::nullopt;
    }
    // Converted chunk by chunk (cp1252 has one byte per character, so any cut is safe): a large
    // control file is then held once, as UTF-8, instead of twice while it loads.
    std::string text;
    const auto hint = std::min(in.sizeHint(), MaxFileBytes);
    text.reserve(hint + hint / 32);
    if (!in.readChunks(MaxFileBytes, [&text](std::string_view bytes) { appendCp1252AsUtf8(text, bytes); })) {
        return std::nullopt;
    }
    return text;
}

std::string writeFileAtomic(const std::string& path, std::string_view bytes) {
    const auto error = writeBytesAtomic(path, bytes);
    if (!error) {
        return {};
    }
    std::string text = "Kann Datei nicht schreiben!";
    text.append(LineBreak).append(path).append(LineBreak).append(SystemErrorText::of(error));
    return text;
}

std::string writeAnsiTextAtomic(const std::string& path, std::string_view text) {
    return writeFileAtomic(path, utf8ToCp1252(text));
}

std::string FileCopy(const std::string& source, const std::string& target) {
    const auto error = copyFile(source, target);
    if (!error) {
        return {};
    }
    std::string text = "Kann Datei nicht kopieren!";
    text.append(LineBreak).append(source).append(LineBreak).append("nach").append(LineBreak);
    text.append(target).append(LineBreak).append(SystemErrorText::of(error));
    return text;
}

std::string FileOpenCheck(const std::string& path) {
    if (!fileExists(path)) {
        std::string text = "Datei nicht gefunden!";
        return text.append(LineBreak).append(path);
    }
    ReadFile in(path);
    if (!in.error()) {
        return {};
    }
    std::string text = "Kann Datei nicht öffnen!";
    text.append(LineBreak).append(path).append(LineBreak).append(SystemErrorText::of(in.error()));
    return text;
}

std::error_code flushFolder(const std::string& folder) {
    const int fd = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0) {
        return {errno, std::generic_category()};
    }
    // One flush of the file system instead of one per file; it reports write errors since Linux 5.8.
    std::error_code error;
    if (::syncfs(fd) != 0) {
        error = {errno, std::generic_category()};
    }
    ::close(fd);
    return error;
}

bool fileExists(const std::string& path) {
    struct stat info {};
    return validPath(path) && ::stat(path.c_str(), &info) == 0 && S_ISREG(info.st_mode);
}

bool folderExists(const std::string& path) {
    struct stat info {};
    return validPath(path) && ::stat(path.c_str(), &info) == 0 && S_ISDIR(info.st_mode);
}

} // namespace wordbm
