#pragma once

#include <string>

namespace wordbm {

// The hidden files this program writes beside a target before renaming them over it
// (".wbm-<host>-<pid>-<n>.tmp"). A run that is killed leaves its file behind; the name says which
// process of which host made it, so the next run into that folder removes the files of processes
// of this host that have ended, and only those.
class HiddenTemporary {
public:
    // A new name for a temporary file in `folder` (a path in it). Removes the files that ended
    // processes left in that folder, once per folder and process.
    static std::string besideIn(const std::string& folder);

    // Removes the left-over files of ended processes of this host in `folder`; returns how many.
    static int removeStale(const std::string& folder);

    // The process id in a name of this pattern made on this host; 0 for any other name.
    static long processOf(const std::string& fileName);
};

} // namespace wordbm
