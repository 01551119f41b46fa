#include "engine/ooxml/XmlPartIo.h"

#include "engine/ooxml/PackageError.h"

#include <cctype>

namespace wordbm::ooxml {

namespace {

constexpr unsigned ParseFlags = pugi::parse_default | pugi::parse_ws_pcdata | pugi::parse_declaration;
// The declaration node is written when the part had one; pugixml would otherwise invent one.
constexpr unsigned SaveFlags = pugi::format_raw | pugi::format_no_declaration;

class StringWriter : public pugi::xml_writer {
public:
    void write(const void* data, std::size_t size) override {
        text.append(static_cast<const char*>(data), size);
    }
    std::string text;
};

bool sameLetter(char a, char b) {
    return std::toupper(static_cast<unsigned char>(a)) == std::toupper(static_cast<unsigned char>(b));
}

bool matchesSkippingZeros(std::string_view bytes, std::size_t from, std::string_view pattern) {
    std::size_t at = from;
    for (const char wanted : pattern) {
        while (at < bytes.size() && bytes[at] == '\0') {
            ++at;
        }
        if (at == bytes.size() || !sameLetter(bytes[at], wanted)) {
            return false;
        }
        ++at;
    }
    return true;
}

// The text is kept in memory as UTF-8 and written as UTF-8, so a declaration naming another
// encoding would make the saved part unreadable.
void declareUtf8(pugi::xml_document& document) {
    const auto declaration = document.first_child();
    if (declaration.type() != pugi::node_declaration) {
        return;
    }
    auto encoding = declaration.attribute("encoding");
    if (encoding && std::string_view(encoding.value()) != "UTF-8" &&
        std::string_view(encoding.value()) != "utf-8") {
        encoding.set_value("UTF-8");
    }
}

} // namespace

bool containsDoctype(std::string_view bytes) {
    static constexpr std::string_view Pattern = "<!DOCTYPE";
    for (auto at = bytes.find('<'); at != std::string_view::npos; at = bytes.find('<', at + 1)) {
        if (matchesSkippingZeros(bytes, at, Pattern)) {
            return true;
        }
    }
    return false;
}

std::unique_ptr<pugi::xml_document> parseXmlPart(std::string_view bytes, std::string_view partName) {
    if (containsDoctype(bytes)) {
        throw packageError::refused("Dokumenttyp-Deklaration (DOCTYPE) in «" + std::string(partName) + "»");
    }
    auto document = std::make_unique<pugi::xml_document>();
    const auto result = document->load_buffer(bytes.data(), bytes.size(), ParseFlags);
    if (!result) {
        throw packageError::badXml(partName, result.offset);
    }
    if (!document->document_element()) {
        throw packageError::badXml(partName, 0);
    }
    declareUtf8(*document);
    return document;
}

std::string serialiseXmlPart(const pugi::xml_document& document) {
    StringWriter writer;
    document.save(writer, "", SaveFlags, pugi::encoding_utf8);
    return std::move(writer.text);
}

} // namespace wordbm::ooxml
