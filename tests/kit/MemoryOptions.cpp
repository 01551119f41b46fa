#include "kit/MemoryOptions.h"

namespace wordbm {

std::string MemoryOptions::get(const std::string& key) {
    const auto found = values.find(key);
    return found == values.end() ? std::string() : found->second;
}

void MemoryOptions::set(const std::string& key, const std::string& value) {
    values[key] = value;
    ++writes;
}

} // namespace wordbm
