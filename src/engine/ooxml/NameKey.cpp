#include "engine/ooxml/NameKey.h"

namespace wordbm::ooxml {

std::string nameKey(std::string_view name) {
    std::string key(name);
    for (std::size_t i = 0; i < key.size(); ++i) {
        const auto byte = static_cast<unsigned char>(key[i]);
        if (byte >= 'A' && byte <= 'Z') {
            key[i] = static_cast<char>(byte + 32);
        } else if (byte == 0xC3 && i + 1 < key.size()) {
            // U+00C0..U+00DE are C3 80..C3 9E; the lower-case letters are 0x20 above (U+00D7 is no letter).
            const auto next = static_cast<unsigned char>(key[i + 1]);
            if (next >= 0x80 && next <= 0x9E && next != 0x97) {
                key[i + 1] = static_cast<char>(next + 0x20);
            }
            ++i;
        }
    }
    return key;
}

} // namespace wordbm::ooxml
