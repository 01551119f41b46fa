#pragma once

#include <string>
#include <string_view>

namespace wordbm::ooxml {

class Package;

// Pictures stored in the package: a new media part next to the story's part and the relationship
// through which the story's drawing refers to it.
class MediaParts {
public:
    // Returns the relationship id from `sourcePart` to the new part. `extension` without the dot
    // ("png", "jpeg"...). Throws AutomationError for an image type Word cannot show.
    static std::string add(Package& package, const std::string& sourcePart, std::string bytes,
                           std::string_view extension);

    // "png" for file.PNG; empty when there is no extension.
    static std::string extensionOf(const std::string& fileName);
};

} // namespace wordbm::ooxml
