#include "kit/TempDir.h"

#include <cstdlib>
#include <stdexcept>
#include <unistd.h>

namespace fs = std::filesystem;

TempDir::TempDir() {
    std::string pattern = (fs::temp_directory_path() / "wordbm-test-XXXXXX").string();
    if (::mkdtemp(pattern.data()) == nullptr) {
        throw std::runtime_error("cannot create a temporary folder");
    }
    path_ = pattern;
}

std::size_t TempDir::entriesIn(const fs::path& folder) {
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
}

bool TempDir::runningAsRoot() {
    return ::geteuid() == 0;
}

TempDir::~TempDir() {
    // Tests make folders read-only; give the owner write access back so they can be removed.
    std::error_code error;
    fs::permissions(path_, fs::perms::owner_all, fs::perm_options::add, error);
    for (auto it = fs::recursive_directory_iterator(path_, error);
         !error && it != fs::recursive_directory_iterator(); it.increment(error)) {
        if (it->is_directory(error) && !it->is_symlink(error)) {
            fs::permissions(it->path(), fs::perms::owner_all, fs::perm_options::add, error);
        }
    }
    fs::remove_all(path_, error);
}
