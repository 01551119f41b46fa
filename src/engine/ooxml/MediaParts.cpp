#include "engine/ooxml/MediaParts.h"

#include "engine/ooxml/Package.h"
#include "engine/word/AutomationError.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <utility>

namespace wordbm::ooxml {

namespace {

constexpr const char* ImageRelationship =
    "http://schemas.openxmlformats.org/officeDocument/2006/relationships/image";

constexpr std::array<std::pair<std::string_view, std::string_view>, 7> ImageTypes{{{"png", "image/png"},
                                                                                   {"jpeg", "image/jpeg"},
                                                                                   {"jpg", "image/jpeg"},
                                                                                   {"gif", "image/gif"},
                                                                                   {"bmp", "image/bmp"},
                                                                                   {"tif", "image/tiff"},
                                                                                   {"tiff", "image/tiff"}}};

std::string folderOf(const std::string& part) {
    const auto slash = part.rfind('/');
    return slash == std::string::npos ? std::string() : part.substr(0, slash + 1);
}

} // namespace

std::string MediaParts::extensionOf(const std::string& fileName) {
    const auto slash = fileName.find_last_of("/\\");
    const auto dot = fileName.rfind('.');
    if (dot == std::string::npos || (slash != std::string::npos && dot < slash)) {
        return {};
    }
    auto extension = fileName.substr(dot + 1);
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return extension;
}

std::string MediaParts::add(Package& package, const std::string& sourcePart, std::string bytes,
                            std::string_view extension) {
    const auto type = std::find_if(ImageTypes.begin(), ImageTypes.end(),
                                   [&](const auto& entry) { return entry.first == extension; });
    if (type == ImageTypes.end()) {
        throw AutomationError("Dieses Bildformat kann nicht eingefügt werden: ." + std::string(extension));
    }
    const auto folder = folderOf(sourcePart);
    std::string name;
    for (int number = 1;; ++number) {
        name = folder + "media/wordbm" + std::to_string(number) + "." + std::string(extension);
        if (!package.hasPart(name)) {
            break;
        }
    }
    package.setBytes(name, std::move(bytes), type->second);
    return package.addRelationship(sourcePart, ImageRelationship, name.substr(folder.size()));
}

} // namespace wordbm::ooxml
