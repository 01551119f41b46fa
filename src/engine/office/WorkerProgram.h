#pragma once

#include <string>

namespace wordbm::office {

inline constexpr const char* WorkerProgramName = "wordbm-office-worker";

// The worker program to start, looked for in this order:
//  1. $WORDBM_OFFICE_WORKER, taken as it is when set (for installs elsewhere and for tests);
//  2. beside the running program (the installed layout, and build/src/app next to wordbm);
//  3. where this build tree made it (test and benchmark programs run from other folders).
// Empty when none of these exists.
std::string findWorkerProgram();

} // namespace wordbm::office
