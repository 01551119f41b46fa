#include "engine/ooxml/TemporaryFolder.h"

#include "engine/word/AutomationError.h"

#include <cstdlib>
#include <filesystem>
#include <stdlib.h>

namespace wordbm::ooxml {

TemporaryFolder::TemporaryFolder() {
    std::error_code error;
    auto pattern = (std::filesystem::temp_directory_path(error) / "wordbm-XXXXXX").string();
    // mkdtemp makes the folder with mode 0700: invoices are nobody else's business.
    if (error || ::mkdtemp(pattern.data()) == nullptr) {
        throw AutomationError("Es kann kein temporärer Ordner angelegt werden.");
    }
    path_ = pattern;
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

} // namespace wordbm::ooxml
