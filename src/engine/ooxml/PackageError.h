#pragma once

#include "engine/word/AutomationError.h"

#include <string>
#include <string_view>

// The German descriptions a user sees when a form cannot be opened or saved. Kept together so
// that the wording stays consistent across the package layer.
namespace wordbm::ooxml::packageError {

// "Die Datei ist kein gültiges Word-Dokument (<reason>)."
AutomationError damaged(std::string_view reason);

// A package that may be hostile: refused before it can exhaust memory or reach outside.
AutomationError refused(std::string_view reason);

AutomationError notWord();
AutomationError unreadable(const std::string& path, const std::string& why);
// `path` may be empty when the archive could not even be built in memory.
AutomationError unsaved(const std::string& path, const std::string& why);
AutomationError missingPart(std::string_view name);
AutomationError badPartName(std::string_view name);
AutomationError badXml(std::string_view partName, std::ptrdiff_t offset);

} // namespace wordbm::ooxml::packageError
