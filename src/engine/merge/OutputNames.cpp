#include "engine/merge/OutputNames.h"

#include "engine/merge/InvoiceMaker.h"

#include <filesystem>
#include <system_error>

namespace wordbm {

namespace fs = std::filesystem;

namespace {

// Letter case of ASCII and of the two-byte Latin-1 letters (ä, Ä ...), which names of Swiss
// clients and folders carry; other characters are compared as they are.
std::string folded(const std::string& text) {
    std::string result = text;
    for (std::size_t i = 0; i < result.size(); ++i) {
        const auto byte = static_cast<unsigned char>(result[i]);
        if (byte >= 'A' && byte <= 'Z') {
            result[i] = static_cast<char>(byte - 'A' + 'a');
        } else if (byte == 0xC3 && i + 1 < result.size()) {
            const auto next = static_cast<unsigned char>(result[i + 1]);
            if (next >= 0x80 && next <= 0x9E && next != 0x97) {
                result[i + 1] = static_cast<char>(next + 0x20);
            }
            ++i;
        }
    }
    return result;
}

} // namespace

std::string OutputNames::key(const std::string& path, bool withExtension) {
    std::error_code error;
    fs::path absolute = fs::absolute(path, error);
    if (error) {
        absolute = path;
    }
    absolute = absolute.lexically_normal();
    if (!withExtension) {
        absolute.replace_extension();
    }
    return folded(absolute.string());
}

void OutputNames::reserve(const std::string& path) {
    if (!path.empty()) {
        reserved_.insert(key(path, true));
    }
}

bool OutputNames::claim(const std::string& path) {
    if (reserved_.contains(key(path, true)) || reserved_.contains(key(InvoiceMaker::pdfPathOf(path), true))) {
        return false;
    }
    return taken_.insert(key(path, false)).second;
}

} // namespace wordbm
