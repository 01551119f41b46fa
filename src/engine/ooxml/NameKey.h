#pragma once

#include <string>
#include <string_view>

namespace wordbm::ooxml {

// Bookmark and shape names compare ignoring case, as in Word: ASCII and the Latin-1 letters
// (Ä, Ö, Ü, É ...) are folded; other scripts compare as written.
std::string nameKey(std::string_view name);

} // namespace wordbm::ooxml
