#pragma once

#include <string>
#include <string_view>

// The per-user base folder and the "_temp_" working folder below it. Paths inside the program
// keep the backslash as separator; nativePath turns it into "/" where a path reaches the disk.
namespace wordbm {

// Joins two pieces with exactly one backslash; an empty left piece gives "\" + right.
std::string PathJoin(std::string_view left, std::string_view right);

// "\" becomes "/" (on Linux); other characters stay.
std::string nativePath(std::string_view path);

// The folder exists and, unless existenceOnly, a file can be written in it (tried, then removed).
bool FolderUsable(std::string_view path, bool existenceOnly);

// "_$_$_" + six random digits + "_$_$_".
std::string TestFileName();

// The first usable candidate of TARVELL_DEBUG, the home's "Documents" (the desktop's documents
// folder, e.g. ~/Dokumente, where HOME stands for the profile) or "Eigene Dateien", the temp
// folders; the last fallback is a folder of the user's own (0700), never the shared temp folder.
// Returns a native path.
std::string BaseFolderGet(bool existenceOnly, bool store, bool force);

// A folder of the user's own that nobody else can read: "Tarvell" in the user's cache folder, else
// one made for this process in the temp folder (mode 0700). Empty when none can be made.
std::string UserOwnFolderGet();

// "_temp_" under the base folder, created (one level, 0700) when missing; the base folder when that fails.
std::string WorkFolderGet(bool existenceOnly, bool store, bool force);

} // namespace wordbm
