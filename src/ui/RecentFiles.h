#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace wordbm {

class OptionsPort;

// The files of one kind opened last, newest first, kept under one options key so that the next
// run offers them again; with them the folder a file of that kind was last taken from, where the
// file chooser starts.
class RecentFiles {
public:
    static constexpr std::size_t Limit = 8;

    // keyStem names the two options: keyStem + "Recent" (the list) and keyStem + "Folder".
    explicit RecentFiles(std::string keyStem) : keyStem_(std::move(keyStem)) {}

    // Newest first; empty without options.
    std::vector<std::string> list(OptionsPort* options) const;
    // Puts `path` first (once), keeps at most Limit, and remembers its folder.
    void add(OptionsPort* options, const std::string& path) const;
    void clear(OptionsPort* options) const;

    // The folder a file of this kind was last opened or chosen from; "" when none is known.
    std::string folder(OptionsPort* options) const;
    void rememberFolder(OptionsPort* options, const std::string& folder) const;

    // The list as one options text: each path in double quotes (inner ones doubled), joined by
    // ";". Decoding skips what is not in that form.
    static std::string encode(const std::vector<std::string>& paths);
    static std::vector<std::string> decode(const std::string& text);

private:
    std::string keyStem_;
};

} // namespace wordbm
