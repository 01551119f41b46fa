#include "WorkerProgram.h"

#include "support/ProgramData.h"
#include "support/ProgramFolder.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <unistd.h>

namespace wordbm::office {

namespace {

bool executable(const std::filesystem::path& path) {
    std::error_code ignored;
    return std::filesystem::is_regular_file(path, ignored) && ::access(path.c_str(), X_OK) == 0;
}

#ifdef WORDBM_OFFICE_WORKER_BUILD_PATH
// Only the programs of this build tree fall back on its worker: an installed program runs on the
// installed files alone, so that a missing one shows instead of being covered by a build tree.
bool runFromBuildTree() {
    const std::filesystem::path tree = WORDBM_BUILD_TREE;
    const std::filesystem::path folder = ProgramFolder();
    return std::mismatch(tree.begin(), tree.end(), folder.begin(), folder.end()).first == tree.end();
}
#endif

} // namespace

std::string findWorkerProgram() {
    if (const char* overridden = std::getenv("WORDBM_OFFICE_WORKER"); overridden != nullptr && *overridden) {
        return overridden;
    }
    if (const std::filesystem::path own = ProgramHelperPath(WorkerProgramName); executable(own)) {
        return own.string();
    }
#ifdef WORDBM_OFFICE_WORKER_BUILD_PATH
    if (runFromBuildTree() && executable(WORDBM_OFFICE_WORKER_BUILD_PATH)) {
        return WORDBM_OFFICE_WORKER_BUILD_PATH;
    }
#endif
    return {};
}

} // namespace wordbm::office
