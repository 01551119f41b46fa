#include "support/ProgramData.h"

#include "support/ProgramFolder.h"

#include <filesystem>
#include <system_error>

// Set by the build from the install layout; relative to the folder of the installed program.
#ifndef WORDBM_INSTALLED_DATA_DIR
#define WORDBM_INSTALLED_DATA_DIR "../share/wordbm"
#endif
#ifndef WORDBM_INSTALLED_HELPER_DIR
#define WORDBM_INSTALLED_HELPER_DIR "../libexec/wordbm"
#endif

namespace wordbm {

namespace {

std::string besideOrInstalled(const std::string& name, const char* installedFolder) {
    const std::filesystem::path folder = ProgramFolder();
    std::error_code ignored;
    if (const auto beside = folder / name; std::filesystem::exists(beside, ignored)) {
        return beside.string();
    }
    return (folder / installedFolder / name).lexically_normal().string();
}

} // namespace

std::string ProgramDataPath(const std::string& name) {
    return besideOrInstalled(name, WORDBM_INSTALLED_DATA_DIR);
}

std::string ProgramHelperPath(const std::string& name) {
    return besideOrInstalled(name, WORDBM_INSTALLED_HELPER_DIR);
}

} // namespace wordbm
