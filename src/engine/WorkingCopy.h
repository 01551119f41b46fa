#pragma once

#include <string>

namespace wordbm {

// The working file for an original: the same file name in this session's own folder under the
// "_temp_" working folder (see SessionFolder).
std::string WorkingCopyPath(const std::string& original);

// Makes the working copy of `original` and returns its path. A file of that name is removed
// first; failures of the removal or the copy are swallowed, so a stale working file may remain.
// An original that already lies in the working folder is left as it is.
std::string WorkingCopyMake(const std::string& original);

} // namespace wordbm
