#pragma once

#include <string>
#include <string_view>

// Part names as the package uses them: zip entry names without a leading "/", compared ignoring
// (ASCII) case as packages require, but kept with the spelling they were written with.
namespace wordbm::ooxml {

// The lookup key of a part name: lower case, a leading "/" dropped.
std::string partKey(std::string_view name);

// The .rels part that holds the relationships of `sourcePart` ("" = the package's own).
std::string relsPartName(std::string_view sourcePart);

// A relationship target taken relative to the folder of `sourcePart` (or from the root when it
// starts with "/"), with "." and ".." steps resolved; a ".." above the root stays at the root.
std::string resolvePartTarget(std::string_view sourcePart, std::string_view target);

// The text after the last "." of the last name step, empty when there is none.
std::string extensionOf(std::string_view name);

// False for names that could step out of a folder or be taken as absolute: "..", "." or empty
// steps, a leading slash or backslash, a drive letter. A trailing "/" (a folder entry) is allowed.
bool isSafeEntryName(std::string_view name);

bool isFolderEntry(std::string_view name);

} // namespace wordbm::ooxml
