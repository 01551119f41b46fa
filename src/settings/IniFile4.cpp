#include "settings/IniFile4.h"

#include "support/FileOps.h"
#include "support/Folders.h"
#include "support/Strings.h"

#include <filesystem>
#include <optional>
#include <system_error>

namespace wordbm {

namespace {

constexpr std::string_view HeaderKey = "_";
constexpr std::string_view LineBreak = "\r\n";

// Files from other systems may end lines with LF or CR alone; all three count as line ends.
template <typename Visit> void forEachLine(std::string_view text, Visit visit) {
    std::size_t start = 0;
    while (start < text.size()) {
        const std::size_t end = text.find_first_of("\r\n", start);
        if (end == std::string_view::npos) {
            visit(text.substr(start));
            return;
        }
        visit(text.substr(start, end - start));
        start = end + 1;
        if (text[end] == '\r' && start < text.size() && text[start] == '\n') {
            ++start;
        }
    }
}

void appendLine(std::string& buffer, std::string_view line) {
    if (!buffer.empty()) {
        buffer += LineBreak;
    }
    buffer += line;
}

// The header line as written: anything up to its first ";" is dropped.
std::string_view writtenHeader(std::string_view header) {
    const std::size_t semicolon = header.find(';');
    return semicolon == std::string_view::npos ? header : header.substr(semicolon + 1);
}

} // namespace

void IniFile4::FilePath(const std::string& path) {
    filePath_ = path;
    ReadFile();
}

void IniFile4::Clear() {
    sections_.clear();
    currentSection_.clear();
    sectionSeen_ = false;
}

void IniFile4::ReadFile(const std::string& path) {
    Clear();
    if (!path.empty()) {
        filePath_ = path;
    }
    if (filePath_.empty()) {
        return;
    }
    const std::optional<std::string> text = readAnsiText(nativePath(filePath_));
    if (!text) {
        return;
    }
    forEachLine(*text, [this](std::string_view line) { readLine(line); });
}

void IniFile4::readLine(std::string_view rawLine) {
    const std::string line = trim(rawLine);
    if (line.empty()) {
        return;
    }
    if (line.front() == '[') {
        const std::size_t close = line.find(']');
        if (close == std::string::npos) {
            return;
        }
        currentSection_ = line.substr(1, close - 1);
        sectionSeen_ = true;
        ensureSection(currentSection_);
        return;
    }
    const std::size_t equals = line.find('=');
    if (!sectionSeen_ || equals == std::string::npos || equals == 0) {
        return;
    }
    Value(currentSection_, line.substr(0, equals), line.substr(equals + 1));
}

IniFile4::Lines& IniFile4::ensureSection(const std::string& name) {
    if (Lines* existing = sections_.find(name)) {
        return *existing;
    }
    Lines lines;
    lines.assign(std::string(HeaderKey), "[" + name + "]");
    return sections_.assign(name, std::move(lines));
}

std::vector<std::string> IniFile4::Section(const std::string& name) {
    std::vector<std::string> result;
    const Lines& lines = ensureSection(name);
    result.reserve(lines.size());
    for (const auto& entry : lines) {
        result.push_back(entry.second);
    }
    return result;
}

void IniFile4::RemoveSection(const std::string& name) {
    sections_.erase(name);
}

void IniFile4::Value(const std::string& section, const std::string& key, const std::string& value) {
    Lines& lines = ensureSection(section);
    if (Lines::foldKey(key) == HeaderKey) {
        return;
    }
    lines.moveToEnd(key, value.empty() ? std::string() : key + "=" + value);
}

std::string IniFile4::ValueFull(const std::string& section, const std::string& key) const {
    const Lines* lines = sections_.find(section);
    if (lines == nullptr) {
        return {};
    }
    const std::string* line = lines->find(key);
    return line == nullptr ? std::string() : *line;
}

std::string IniFile4::Value(const std::string& section, const std::string& key) const {
    std::string line = ValueFull(section, key);
    const std::size_t equals = line.find('=');
    if (equals == std::string::npos || equals + 1 == line.size()) {
        return line;
    }
    return line.substr(equals + 1);
}

std::string IniFile4::Stream() const {
    std::string buffer;
    for (const auto& [name, lines] : sections_) {
        appendLine(buffer, writtenHeader(lines.front().second));
        for (const auto& entry : lines) {
            if (entry.second.empty() || entry.second.front() != '[') {
                appendLine(buffer, entry.second);
            }
        }
        appendLine(buffer, "");
    }
    return buffer;
}

void IniFile4::WriteFile(const std::string& path, bool overwrite) {
    if (!path.empty()) {
        filePath_ = path;
    }
    if (filePath_.empty() || sections_.empty()) {
        return;
    }
    const std::string target = nativePath(filePath_);
    if (!overwrite && fileExists(target)) {
        return;
    }
    // The error text is dropped on purpose: the class shows no messages and callers
    // learn about a missing file when they read it again.
    (void)writeAnsiTextAtomic(target, Stream());
}

void IniFile4::Delete() const {
    if (filePath_.empty()) {
        return;
    }
    std::error_code error;
    const std::filesystem::path target(nativePath(filePath_));
    // remove() would also take an empty folder; only files are ours to delete.
    if (!std::filesystem::is_directory(target, error)) {
        std::filesystem::remove(target, error);
    }
}

bool IniFile4::Exists() const {
    return !filePath_.empty() && fileExists(nativePath(filePath_));
}

} // namespace wordbm
