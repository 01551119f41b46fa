#pragma once

#include <string>

namespace wordbm::office {

inline constexpr const char* WorkerProgramName = "wordbm-office-worker";

// The worker program to start, looked for in this order:
//  1. $WORDBM_OFFICE_WORKER, taken as it is when set (for installs elsewhere and for tests);
//  2. beside the running program (build/src/app next to wordbm), else in the installed layout's
//     helper folder relative to it (<prefix>/libexec/wordbm, see ProgramData.h);
//  3. where this build tree made it, for the programs of the build tree only (test and benchmark
//     programs run from other folders).
// Empty when none of these exists.
std::string findWorkerProgram();

} // namespace wordbm::office
