#include "WorkerProgram.h"

#include <cstdlib>
#include <filesystem>
#include <unistd.h>

namespace wordbm::office {

namespace {

bool executable(const std::filesystem::path& path) {
    std::error_code ignored;
    return std::filesystem::is_regular_file(path, ignored) && ::access(path.c_str(), X_OK) == 0;
}

std::filesystem::path besideRunningProgram() {
    std::error_code error;
    const auto self = std::filesystem::read_symlink("/proc/self/exe", error);
    return error ? std::filesystem::path() : self.parent_path() / WorkerProgramName;
}

} // namespace

std::string findWorkerProgram() {
    if (const char* overridden = std::getenv("WORDBM_OFFICE_WORKER"); overridden != nullptr && *overridden) {
        return overridden;
    }
    if (const auto beside = besideRunningProgram(); !beside.empty() && executable(beside)) {
        return beside.string();
    }
#ifdef WORDBM_OFFICE_WORKER_BUILD_PATH
    if (executable(WORDBM_OFFICE_WORKER_BUILD_PATH)) {
        return WORDBM_OFFICE_WORKER_BUILD_PATH;
    }
#endif
    return {};
}

} // namespace wordbm::office
