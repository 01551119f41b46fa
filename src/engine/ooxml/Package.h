#pragma once

#include "engine/ooxml/PackageLimits.h"
#include "engine/ooxml/PackagePart.h"
#include "engine/ooxml/Relationship.h"

#include <cstdint>
#include <memory>
#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace wordbm::ooxml {

// A Word document as a package of parts: the zip entries with their content types and
// relationships. Parts are parsed when first asked for, and only parts that were changed are
// written anew on save; every other entry is copied from the original archive as it was stored.
// Part names are given without a leading "/" and compared ignoring case. A pugi::xml_document
// handed out stays at its address until its part is removed or replaced.
// Failures are AutomationErrors with a German description a user can read.
class Package {
public:
    // Refuses damaged and hostile files (see PackageLimits) and other Office files. A Strict Open
    // XML document is read as its transitional twin (StrictOpenXml) and saved so.
    static std::unique_ptr<Package> open(const std::string& path, const PackageLimits& limits = {});
    static std::unique_ptr<Package> fromBytes(std::string bytes, const PackageLimits& limits = {});
    // A deep copy: edits to either leave the other as it was.
    std::unique_ptr<Package> clone() const;

    bool hasPart(std::string_view name) const;
    // In the original archive's order, added parts at the end.
    std::vector<std::string> partNames() const;
    // Parsed on first use; throws when the part is missing or not well-formed.
    pugi::xml_document& xml(std::string_view name);
    // Tells the package that the parsed XML of the part was edited, so save writes it.
    void markModified(std::string_view name);
    // The part's bytes, serialised from its XML when that was modified; throws when missing.
    std::string bytes(std::string_view name) const;
    // Adds or replaces a part; a non-empty content type is recorded in [Content_Types].xml.
    void setBytes(std::string_view name, std::string bytes, std::string_view contentType);
    // Also drops the part's .rels part and its Override; nothing happens for an unknown name.
    void removePart(std::string_view name);
    // The Override, else the Default for the extension; empty when neither exists.
    std::string contentType(std::string_view name) const;

    // sourcePart "" = the package's own relationships; empty when the source has no .rels part.
    std::vector<Relationship> relationships(std::string_view sourcePart) const;
    // Creates the .rels part when needed; returns the new relationship's id.
    std::string addRelationship(std::string_view sourcePart, std::string_view type, std::string_view target,
                                std::string_view targetMode = {});
    void removeRelationship(std::string_view sourcePart, std::string_view id);
    // The part name an internal target of `sourcePart` refers to.
    std::string resolveTarget(std::string_view sourcePart, std::string_view target) const;

    // The part the officeDocument relationship names, e.g. "word/document.xml"; empty when none.
    std::string mainDocumentPart() const;
    // True for a .docm (or .dotm): its main content type is the macro-enabled one.
    bool isMacroEnabled() const;

    // Atomic: a temporary file in the target folder, flushed to disk, renamed over the target.
    void save(const std::string& path) const;
    std::string saveToBytes() const;

private:
    // Only open, fromBytes and clone make packages; the key lets them use std::make_unique.
    struct Key {
        explicit Key() = default;
    };

public:
    explicit Package(Key) {}

private:
    void load(const PackageLimits& limits);
    void checkIsWordDocument();
    PackagePart* find(std::string_view name) const;
    PackagePart& get(std::string_view name) const;
    PackagePart& append(std::string name);
    void erase(const PackagePart& part);
    std::string contentOf(const PackagePart& part) const;
    // Parsing on first use fills a cache, which const readers may do too.
    pugi::xml_document& parsed(PackagePart& part) const;
    void recordContentType(std::string_view name, std::string_view contentType);
    void dropOverride(std::string_view name);

    std::shared_ptr<const std::string> original_; // the archive as read
    std::vector<std::unique_ptr<PackagePart>> parts_;
    std::unordered_map<std::string, PackagePart*> byKey_;
    std::vector<std::uint64_t> removedEntries_; // indexes in the original archive
};

} // namespace wordbm::ooxml
