#pragma once

#include <string>

namespace wordbm::office {

// Presets the LibreOffice user profile in folder before the office first reads it: no lock files
// beside the forms (a killed worker would leave ".~lock.<form>#" behind, and the folder may be
// shared), and no macros from a .docm, whatever its signature.
// Returns false when the settings file cannot be written.
bool writeProfileSettings(const std::string& folder);

} // namespace wordbm::office
