#include "engine/ooxml/Package.h"

#include "engine/ooxml/ContentTypes.h"
#include "engine/ooxml/PackageError.h"
#include "engine/ooxml/PartName.h"
#include "engine/ooxml/RelationshipsXml.h"
#include "engine/ooxml/StrictOpenXml.h"
#include "engine/ooxml/XmlPartIo.h"
#include "engine/ooxml/ZipReader.h"
#include "engine/ooxml/ZipRewriter.h"
#include "support/AtomicFile.h"
#include "support/ReadFile.h"
#include "support/SystemErrorText.h"

#include <algorithm>
#include <array>

namespace wordbm::ooxml {

namespace {

constexpr std::string_view ContentTypesPart = "[Content_Types].xml";
constexpr std::string_view RelsContentType = "application/vnd.openxmlformats-package.relationships+xml";
constexpr std::string_view OfficeDocumentType =
    "http://schemas.openxmlformats.org/officeDocument/2006/relationships/officeDocument";

constexpr std::array<std::string_view, 2> MacroMainTypes = {
    "application/vnd.ms-word.document.macroenabled.main+xml",
    "application/vnd.ms-word.template.macroenabledtemplate.main+xml",
};
constexpr std::array<std::string_view, 2> PlainMainTypes = {
    "application/vnd.openxmlformats-officedocument.wordprocessingml.document.main+xml",
    "application/vnd.openxmlformats-officedocument.wordprocessingml.template.main+xml",
};

// Media types ignore case; Word writes "macroEnabled" but others need not.
bool isOneOf(std::string_view contentType, const std::array<std::string_view, 2>& types) {
    std::string lower(contentType);
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return std::find(types.begin(), types.end(), lower) != types.end();
}

// Room for zip headers on top of the parts themselves (stored entries are as large as their
// content), so that any package within the limits can be read.
std::size_t fileSizeLimit(const PackageLimits& limits) {
    return static_cast<std::size_t>(limits.maxTotalSize + limits.maxEntries * 1024ull + (1u << 20));
}

std::string describe(std::error_code error) {
    if (error == std::errc::no_such_file_or_directory) {
        return "Datei nicht gefunden";
    }
    if (error == std::errc::permission_denied) {
        return "keine Berechtigung";
    }
    if (error == std::errc::is_a_directory) {
        return "ein Ordner, keine Datei";
    }
    return SystemErrorText::of(error);
}

// Parts whose text names namespaces: XML parts and relationship parts.
bool isXmlPart(std::string_view name) {
    return name.ends_with(".xml") || name.ends_with(".rels") || name.ends_with(".XML");
}

} // namespace

std::unique_ptr<Package> Package::open(const std::string& path, const PackageLimits& limits) {
    ReadFile file(path);
    std::string bytes;
    if (!file.error()) {
        bytes.reserve(std::min(file.sizeHint(), fileSizeLimit(limits)));
    }
    if (file.error() || !file.readAll(bytes, fileSizeLimit(limits))) {
        if (file.error() == std::errc::file_too_large) {
            throw packageError::refused("die Datei ist zu gross");
        }
        throw packageError::unreadable(path, describe(file.error()));
    }
    return fromBytes(std::move(bytes), limits);
}

std::unique_ptr<Package> Package::fromBytes(std::string bytes, const PackageLimits& limits) {
    auto package = std::make_unique<Package>(Key{});
    package->original_ = std::make_shared<const std::string>(std::move(bytes));
    package->load(limits);
    return package;
}

void Package::load(const PackageLimits& limits) {
    ZipReader reader(*original_, limits);
    for (auto& entry : reader.readAll()) {
        auto& part = append(std::move(entry.name));
        part.bytes = std::make_shared<const std::string>(std::move(entry.bytes));
        part.zipIndex = entry.index;
        part.method = entry.method;
        part.folder = isFolderEntry(part.name);
        if (isXmlPart(part.name) && StrictOpenXml::mentions(*part.bytes)) {
            part.bytes = std::make_shared<const std::string>(StrictOpenXml::transitional(*part.bytes));
            part.bytesReplaced = true;
        }
    }
    checkIsWordDocument();
}

void Package::checkIsWordDocument() {
    if (!hasPart(ContentTypesPart)) {
        throw packageError::missingPart(ContentTypesPart);
    }
    xml(ContentTypesPart);
    const auto main = mainDocumentPart();
    if (main.empty() || !hasPart(main)) {
        throw packageError::damaged("Hauptdokument fehlt");
    }
    const auto type = contentType(main);
    if (!isOneOf(type, PlainMainTypes) && !isOneOf(type, MacroMainTypes)) {
        throw packageError::notWord();
    }
    // A damaged or hostile main document is refused on opening, not at the first edit.
    xml(main);
}

std::unique_ptr<Package> Package::clone() const {
    auto copy = std::make_unique<Package>(Key{});
    copy->original_ = original_;
    copy->removedEntries_ = removedEntries_;
    for (const auto& part : parts_) {
        auto& twin = copy->append(part->name);
        twin.bytes = part->bytes;
        twin.xmlModified = part->xmlModified;
        twin.bytesReplaced = part->bytesReplaced;
        twin.zipIndex = part->zipIndex;
        twin.method = part->method;
        twin.folder = part->folder;
        if (part->xml) {
            twin.xml = std::make_unique<pugi::xml_document>();
            twin.xml->reset(*part->xml);
        }
    }
    return copy;
}

PackagePart* Package::find(std::string_view name) const {
    const auto found = byKey_.find(partKey(name));
    return found == byKey_.end() || found->second->folder ? nullptr : found->second;
}

PackagePart& Package::get(std::string_view name) const {
    auto* part = find(name);
    if (!part) {
        throw packageError::missingPart(name);
    }
    return *part;
}

PackagePart& Package::append(std::string name) {
    auto& part = *parts_.emplace_back(std::make_unique<PackagePart>());
    part.name = std::move(name);
    byKey_[partKey(part.name)] = &part;
    return part;
}

void Package::erase(const PackagePart& part) {
    if (part.zipIndex) {
        removedEntries_.push_back(*part.zipIndex);
    }
    byKey_.erase(partKey(part.name));
    std::erase_if(parts_, [&part](const auto& candidate) { return candidate.get() == &part; });
}

pugi::xml_document& Package::parsed(PackagePart& part) const {
    if (!part.xml) {
        part.xml = parseXmlPart(*part.bytes, part.name);
    }
    return *part.xml;
}

std::string Package::contentOf(const PackagePart& part) const {
    return part.xml && part.xmlModified ? serialiseXmlPart(*part.xml) : *part.bytes;
}

bool Package::hasPart(std::string_view name) const {
    return find(name) != nullptr;
}

std::vector<std::string> Package::partNames() const {
    std::vector<std::string> names;
    for (const auto& part : parts_) {
        if (!part->folder) {
            names.push_back(part->name);
        }
    }
    return names;
}

pugi::xml_document& Package::xml(std::string_view name) {
    return parsed(get(name));
}

void Package::markModified(std::string_view name) {
    auto& part = get(name);
    // A part never parsed cannot have been edited; its bytes stay as they are.
    part.xmlModified = part.xml != nullptr;
}

std::string Package::bytes(std::string_view name) const {
    return contentOf(get(name));
}

void Package::setBytes(std::string_view name, std::string bytes, std::string_view contentType) {
    auto* part = find(name);
    if (!part) {
        const auto bare = name.starts_with('/') ? name.substr(1) : name;
        if (!isSafeEntryName(bare) || isFolderEntry(bare)) {
            throw packageError::badPartName(name);
        }
        part = &append(std::string(bare));
    }
    part->bytes = std::make_shared<const std::string>(std::move(bytes));
    part->xml.reset();
    part->xmlModified = false;
    part->bytesReplaced = true;
    if (!contentType.empty() && partKey(name) != partKey(ContentTypesPart)) {
        recordContentType(part->name, contentType);
    }
}

void Package::recordContentType(std::string_view name, std::string_view contentType) {
    auto& types = get(ContentTypesPart);
    if (ContentTypes(parsed(types)).assign(name, contentType)) {
        types.xmlModified = true;
    }
}

void Package::dropOverride(std::string_view name) {
    auto* types = find(ContentTypesPart);
    if (types && ContentTypes(parsed(*types)).removeOverride(name)) {
        types->xmlModified = true;
    }
}

void Package::removePart(std::string_view name) {
    const auto* part = find(name);
    if (!part) {
        return;
    }
    const auto spelled = part->name;
    const auto relsName = relsPartName(spelled);
    erase(*part);
    if (const auto* rels = find(relsName)) {
        erase(*rels);
        dropOverride(relsName);
    }
    dropOverride(spelled);
}

std::string Package::contentType(std::string_view name) const {
    auto* types = find(ContentTypesPart);
    return types ? ContentTypes(parsed(*types)).of(name) : std::string{};
}

std::vector<Relationship> Package::relationships(std::string_view sourcePart) const {
    auto* rels = find(relsPartName(sourcePart));
    return rels ? RelationshipsXml(parsed(*rels)).list() : std::vector<Relationship>{};
}

std::string Package::addRelationship(std::string_view sourcePart, std::string_view type,
                                     std::string_view target, std::string_view targetMode) {
    const auto relsName = relsPartName(sourcePart);
    if (!hasPart(relsName)) {
        setBytes(relsName, std::string(RelationshipsXml::emptyPart()), RelsContentType);
    }
    auto& rels = get(relsName);
    auto id = RelationshipsXml(parsed(rels)).add(type, target, targetMode);
    rels.xmlModified = true;
    return id;
}

void Package::removeRelationship(std::string_view sourcePart, std::string_view id) {
    auto* rels = find(relsPartName(sourcePart));
    if (rels && RelationshipsXml(parsed(*rels)).remove(id)) {
        rels->xmlModified = true;
    }
}

std::string Package::resolveTarget(std::string_view sourcePart, std::string_view target) const {
    auto resolved = resolvePartTarget(sourcePart, target);
    // A target may spell the name in other case; callers get the spelling of the archive.
    const auto* part = find(resolved);
    return part ? part->name : resolved;
}

std::string Package::mainDocumentPart() const {
    for (const auto& relationship : relationships("")) {
        if (relationship.type == OfficeDocumentType && relationship.targetMode != "External") {
            return resolveTarget("", relationship.target);
        }
    }
    return {};
}

bool Package::isMacroEnabled() const {
    const auto main = mainDocumentPart();
    return !main.empty() && isOneOf(contentType(main), MacroMainTypes);
}

void Package::save(const std::string& path) const {
    const auto archive = saveToBytes();
    AtomicFile file(path);
    std::error_code error = file.open();
    if (!error) {
        error = file.write(archive);
    }
    if (!error) {
        error = file.commit();
    }
    if (error) {
        throw packageError::unsaved(path, describe(error));
    }
}

std::string Package::saveToBytes() const {
    const bool untouched = removedEntries_.empty() &&
                           std::none_of(parts_.begin(), parts_.end(),
                                        [](const auto& part) { return part->changed() || !part->zipIndex; });
    if (untouched) {
        return *original_;
    }
    ZipRewriter rewriter(*original_);
    for (const auto index : removedEntries_) {
        rewriter.remove(index);
    }
    for (const auto& part : parts_) {
        if (!part->zipIndex) {
            rewriter.add(part->name, contentOf(*part));
        } else if (part->changed()) {
            rewriter.replace(*part->zipIndex, contentOf(*part), part->method);
        }
    }
    return rewriter.finish();
}

} // namespace wordbm::ooxml
