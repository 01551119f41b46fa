#pragma once

#include <string>

namespace wordbm::ooxml {

// One entry of a .rels part. targetMode is empty for a part inside the package, "External" otherwise.
struct Relationship {
    std::string id, type, target, targetMode;
};

} // namespace wordbm::ooxml
