#include "engine/WorkingCopy.h"

#include "support/FileOps.h"
#include "support/Folders.h"
#include "support/SessionFolder.h"

#include <filesystem>
#include <system_error>

namespace wordbm {

namespace {

std::string fileNameOf(const std::string& path) {
    const auto slash = path.find_last_of("\\/");
    return slash == std::string::npos ? path : path.substr(slash + 1);
}

bool sameFile(const std::string& a, const std::string& b) {
    std::error_code error;
    return std::filesystem::equivalent(a, b, error) && !error;
}

} // namespace

std::string WorkingCopyPath(const std::string& original) {
    return nativePath(PathJoin(SessionFolder::get(), fileNameOf(original)));
}

std::string WorkingCopyMake(const std::string& original) {
    const std::string source = nativePath(original);
    const std::string working = WorkingCopyPath(original);
    // Removing "the old working file" would otherwise delete the user's only copy.
    if (sameFile(source, working)) {
        return working;
    }
    std::error_code error;
    std::filesystem::remove(working, error);
    FileCopy(source, working);
    return working;
}

} // namespace wordbm
