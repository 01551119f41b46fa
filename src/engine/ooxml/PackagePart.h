#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <pugixml.hpp>
#include <string>

namespace wordbm::ooxml {

// One zip entry of a package. Its bytes are shared between clones (they never change in place:
// new bytes replace the pointer); its parsed XML belongs to this part alone.
struct PackagePart {
    std::string name; // as spelled in the archive
    std::shared_ptr<const std::string> bytes;
    std::unique_ptr<pugi::xml_document> xml; // parsed on first use
    bool xmlModified = false;                // the parsed XML is the content now
    bool bytesReplaced = false;              // set through setBytes
    std::optional<std::uint64_t> zipIndex;   // position in the original archive
    std::int32_t method = 8;                 // compression of the original entry
    bool folder = false;                     // a folder entry ("word/"): kept, but not a part

    bool changed() const { return xmlModified || bytesReplaced; }
};

} // namespace wordbm::ooxml
