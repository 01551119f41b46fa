#include "support/ProgramFolder.h"

#include <filesystem>
#include <system_error>

namespace wordbm {

std::string ProgramFolder() {
    std::error_code error;
    const auto self = std::filesystem::read_symlink("/proc/self/exe", error);
    return error ? std::string() : self.parent_path().string();
}

} // namespace wordbm
