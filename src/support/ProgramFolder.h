#pragma once

#include <string>

namespace wordbm {

// The folder that holds the running program file (native path, no trailing separator); "" when the
// system does not tell.
std::string ProgramFolder();

} // namespace wordbm
