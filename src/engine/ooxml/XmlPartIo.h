#pragma once

#include <memory>
#include <pugixml.hpp>
#include <string>
#include <string_view>

// The one place where XML parts are parsed and written, so every part is read with the same
// safe flags: whitespace text and the declaration kept, no document type at all.
namespace wordbm::ooxml {

// Throws AutomationError when the part holds a DOCTYPE (refused before parsing: it is how
// external and exponential entities arrive) or is not well-formed.
std::unique_ptr<pugi::xml_document> parseXmlPart(std::string_view bytes, std::string_view partName);

// UTF-8 without a byte-order mark, nothing reformatted; the declaration only when the part had one.
std::string serialiseXmlPart(const pugi::xml_document& document);

// True when "<!DOCTYPE" occurs in any case, also spelled in UTF-16 or UTF-32 (zero bytes between
// the letters are skipped), so that no encoding slips a document type past the check.
bool containsDoctype(std::string_view bytes);

} // namespace wordbm::ooxml
