#include "ui/RecentFiles.h"

#include "engine/ports/OptionsPort.h"
#include "support/Strings.h"

#include <algorithm>

namespace wordbm {

namespace {

std::string folderOf(const std::string& path) {
    const auto slash = path.rfind('/');
    if (slash == std::string::npos) {
        return {};
    }
    return slash == 0 ? std::string("/") : path.substr(0, slash);
}

} // namespace

std::vector<std::string> RecentFiles::list(OptionsPort* options) const {
    return options ? decode(options->get(keyStem_ + "Recent")) : std::vector<std::string>();
}

void RecentFiles::add(OptionsPort* options, const std::string& path) const {
    if (!options || path.empty()) {
        return;
    }
    std::vector<std::string> paths = list(options);
    std::erase(paths, path);
    paths.insert(paths.begin(), path);
    if (paths.size() > Limit) {
        paths.resize(Limit);
    }
    const std::string text = encode(paths);
    // Written only when it changes: every write is a file written to disk.
    if (text != options->get(keyStem_ + "Recent")) {
        options->set(keyStem_ + "Recent", text);
    }
    rememberFolder(options, folderOf(path));
}

void RecentFiles::clear(OptionsPort* options) const {
    if (options) {
        options->set(keyStem_ + "Recent", {});
    }
}

std::string RecentFiles::folder(OptionsPort* options) const {
    return options ? options->get(keyStem_ + "Folder") : std::string();
}

void RecentFiles::rememberFolder(OptionsPort* options, const std::string& folder) const {
    if (options && !folder.empty() && folder != options->get(keyStem_ + "Folder")) {
        options->set(keyStem_ + "Folder", folder);
    }
}

std::string RecentFiles::encode(const std::vector<std::string>& paths) {
    std::vector<std::string> quoted;
    quoted.reserve(paths.size());
    for (const std::string& path : paths) {
        quoted.push_back(Quote(path));
    }
    return join(quoted, ";");
}

std::vector<std::string> RecentFiles::decode(const std::string& text) {
    std::vector<std::string> paths;
    std::size_t at = 0;
    while (at < text.size() && paths.size() < Limit) {
        if (text[at] != '"') {
            break;
        }
        std::string path;
        std::size_t next = at + 1;
        bool closed = false;
        while (next < text.size()) {
            if (text[next] == '"') {
                if (next + 1 < text.size() && text[next + 1] == '"') {
                    path += '"';
                    next += 2;
                    continue;
                }
                closed = true;
                ++next;
                break;
            }
            path += text[next++];
        }
        if (!closed) {
            break;
        }
        if (!path.empty() && std::find(paths.begin(), paths.end(), path) == paths.end()) {
            paths.push_back(path);
        }
        at = next < text.size() && text[next] == ';' ? next + 1 : text.size();
    }
    return paths;
}

} // namespace wordbm
