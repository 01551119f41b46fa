#pragma once

#include <string>
#include <string_view>

// Files of the billing suite are written in the Windows ANSI code page (cp1252);
// everything inside the program is UTF-8.
namespace wordbm {

std::string cp1252ToUtf8(std::string_view bytes);
void appendCp1252AsUtf8(std::string& text, std::string_view bytes);

// Characters that cp1252 cannot hold become "?"; invalid UTF-8 bytes too.
std::string utf8ToCp1252(std::string_view text);

} // namespace wordbm
