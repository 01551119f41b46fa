#include "engine/ooxml/PartName.h"

#include <vector>

namespace wordbm::ooxml {

namespace {

char asciiLower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

std::string_view folderOf(std::string_view name) {
    const auto slash = name.rfind('/');
    return slash == std::string_view::npos ? std::string_view{} : name.substr(0, slash + 1);
}

// Splits on `separators`, keeping empty steps so that the caller can judge them.
std::vector<std::string_view> steps(std::string_view path, std::string_view separators) {
    std::vector<std::string_view> result;
    std::size_t begin = 0;
    for (;;) {
        const auto end = path.find_first_of(separators, begin);
        result.push_back(path.substr(begin, end == std::string_view::npos ? end : end - begin));
        if (end == std::string_view::npos) {
            return result;
        }
        begin = end + 1;
    }
}

} // namespace

std::string partKey(std::string_view name) {
    if (!name.empty() && name.front() == '/') {
        name.remove_prefix(1);
    }
    std::string key(name);
    for (char& c : key) {
        c = asciiLower(c);
    }
    return key;
}

std::string relsPartName(std::string_view sourcePart) {
    if (!sourcePart.empty() && sourcePart.front() == '/') {
        sourcePart.remove_prefix(1);
    }
    const auto folder = folderOf(sourcePart);
    std::string rels(folder);
    rels += "_rels/";
    rels += sourcePart.substr(folder.size());
    rels += ".rels";
    return rels;
}

std::string resolvePartTarget(std::string_view sourcePart, std::string_view target) {
    target = target.substr(0, target.find('#'));
    std::string combined;
    if (!target.empty() && target.front() == '/') {
        combined = target.substr(1);
    } else {
        combined = folderOf(sourcePart.starts_with('/') ? sourcePart.substr(1) : sourcePart);
        combined += target;
    }
    std::vector<std::string_view> kept;
    for (const auto step : steps(combined, "/")) {
        if (step == "..") {
            if (!kept.empty()) {
                kept.pop_back();
            }
        } else if (!step.empty() && step != ".") {
            kept.push_back(step);
        }
    }
    std::string resolved;
    for (const auto step : kept) {
        if (!resolved.empty()) {
            resolved += '/';
        }
        resolved += step;
    }
    return resolved;
}

std::string extensionOf(std::string_view name) {
    const auto lastStep = name.substr(name.rfind('/') + 1);
    const auto dot = lastStep.rfind('.');
    return dot == std::string_view::npos ? std::string{} : std::string(lastStep.substr(dot + 1));
}

bool isSafeEntryName(std::string_view name) {
    if (isFolderEntry(name)) {
        name.remove_suffix(1);
    }
    if (name.empty() || name.find('\0') != std::string_view::npos) {
        return false;
    }
    if (name.size() >= 2 && name[1] == ':') {
        return false; // "C:..." would be absolute on Windows
    }
    for (const auto step : steps(name, "/\\")) {
        if (step.empty() || step == "." || step == "..") {
            return false;
        }
    }
    return true;
}

bool isFolderEntry(std::string_view name) {
    return !name.empty() && name.back() == '/';
}

} // namespace wordbm::ooxml
