#include "engine/ooxml/PackageError.h"

namespace wordbm::ooxml::packageError {

namespace {

std::string quoted(std::string_view text) {
    return "«" + std::string(text) + "»";
}

} // namespace

AutomationError damaged(std::string_view reason) {
    return AutomationError("Die Datei ist kein gültiges Word-Dokument (" + std::string(reason) + ").");
}

AutomationError refused(std::string_view reason) {
    return AutomationError("Die Datei wird aus Sicherheitsgründen nicht geöffnet (" + std::string(reason) +
                           ").");
}

AutomationError notWord() {
    return AutomationError("Die Datei ist kein Word-Dokument (Office-Datei eines anderen Programms).");
}

AutomationError unreadable(const std::string& path, const std::string& why) {
    return AutomationError("Die Datei kann nicht gelesen werden: " + path + " (" + why + ").");
}

AutomationError unsaved(const std::string& path, const std::string& why) {
    const auto where = path.empty() ? std::string{} : ": " + path;
    return AutomationError("Das Dokument kann nicht gespeichert werden" + where + " (" + why + ").");
}

AutomationError missingPart(std::string_view name) {
    return damaged("Teil " + quoted(name) + " fehlt");
}

AutomationError badPartName(std::string_view name) {
    return AutomationError("Ungültiger Name für einen Teil des Word-Dokuments: " + quoted(name) + ".");
}

AutomationError badXml(std::string_view partName, std::ptrdiff_t offset) {
    return damaged("fehlerhaftes XML in " + quoted(partName) + " bei Byte " + std::to_string(offset));
}

} // namespace wordbm::ooxml::packageError
