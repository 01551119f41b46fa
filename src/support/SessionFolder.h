#pragma once

#include <string>

namespace wordbm {

// The working copies of this process live in a folder of its own under the working folder
// ("_temp_/wbm-<host>-<pid>-<tag>", mode 0700), so that two windows or batch runs never share
// the working copy of two forms with the same file name, and no other user reads it. The folder
// goes when the process ends; folders of processes of this host that died are removed when a
// later process makes its own.
class SessionFolder {
public:
    // The session's folder under the current working folder (WorkFolderGet), made when missing;
    // the working folder itself when it cannot be made. A native path.
    static std::string get();

    // Removes the folders of ended processes of this host under `workFolder`.
    static void removeStale(const std::string& workFolder);

    // This process's folder name.
    static const std::string& name();
    // This machine's name as part of a file name: leftovers of other machines on a shared folder
    // are never taken for our own.
    static std::string hostName();
};

} // namespace wordbm
