#include "FileUrl.h"

#include <filesystem>

namespace wordbm::office {

namespace {

bool keptAsIs(unsigned char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '-' ||
           c == '.' || c == '_' || c == '~' || c == '/';
}

} // namespace

std::string fileUrl(const std::string& path) {
    static const char* const hex = "0123456789ABCDEF";
    std::error_code ignored;
    const std::string absolute = std::filesystem::absolute(path, ignored).lexically_normal().string();
    std::string url = "file://";
    for (const char c : absolute) {
        const auto byte = static_cast<unsigned char>(c);
        if (keptAsIs(byte)) {
            url += c;
        } else {
            url += '%';
            url += hex[byte >> 4];
            url += hex[byte & 0x0F];
        }
    }
    return url;
}

} // namespace wordbm::office
