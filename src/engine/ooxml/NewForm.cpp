#include "engine/ooxml/NewForm.h"

#include "engine/ooxml/Package.h"
#include "engine/ooxml/ZipRewriter.h"

#include <cctype>
#include <filesystem>

namespace wordbm::ooxml {

namespace {

constexpr std::string_view PlainMainType =
    "application/vnd.openxmlformats-officedocument.wordprocessingml.document.main+xml";
constexpr std::string_view MacroMainType = "application/vnd.ms-word.document.macroEnabled.main+xml";
constexpr std::string_view VbaProjectType =
    "http://schemas.microsoft.com/office/2006/relationships/vbaProject";

// The end record of a zip archive without entries: the parts are added to it.
constexpr std::string_view EmptyArchive{"PK\x05\x06\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0", 22};

constexpr const char* BlankContentTypes =
    R"(<?xml version="1.0" encoding="UTF-8" standalone="yes"?>)"
    R"(<Types xmlns="http://schemas.openxmlformats.org/package/2006/content-types">)"
    R"(<Default Extension="rels" ContentType="application/vnd.openxmlformats-package.relationships+xml"/>)"
    R"(<Default Extension="xml" ContentType="application/xml"/>)"
    R"(<Override PartName="/word/document.xml" ContentType="application/vnd.openxmlformats-officedocument.wordprocessingml.document.main+xml"/>)"
    R"(<Override PartName="/word/styles.xml" ContentType="application/vnd.openxmlformats-officedocument.wordprocessingml.styles+xml"/>)"
    R"(</Types>)";

constexpr const char* BlankPackageRels =
    R"(<?xml version="1.0" encoding="UTF-8" standalone="yes"?>)"
    R"(<Relationships xmlns="http://schemas.openxmlformats.org/package/2006/relationships">)"
    R"(<Relationship Id="rId1" Type="http://schemas.openxmlformats.org/officeDocument/2006/relationships/officeDocument" Target="word/document.xml"/>)"
    R"(</Relationships>)";

constexpr const char* BlankDocumentRels =
    R"(<?xml version="1.0" encoding="UTF-8" standalone="yes"?>)"
    R"(<Relationships xmlns="http://schemas.openxmlformats.org/package/2006/relationships">)"
    R"(<Relationship Id="rId1" Type="http://schemas.openxmlformats.org/officeDocument/2006/relationships/styles" Target="styles.xml"/>)"
    R"(</Relationships>)";

// A4 with the margins of a Swiss letter, and room at the foot for the payment part.
constexpr const char* BlankDocument =
    R"(<?xml version="1.0" encoding="UTF-8" standalone="yes"?>)"
    R"(<w:document xmlns:w="http://schemas.openxmlformats.org/wordprocessingml/2006/main">)"
    R"(<w:body><w:p/><w:sectPr><w:pgSz w:w="11906" w:h="16838"/>)"
    R"(<w:pgMar w:top="1417" w:right="1134" w:bottom="1134" w:left="1417" w:header="709" w:footer="709" w:gutter="0"/>)"
    R"(</w:sectPr></w:body></w:document>)";

// Arial, as the forms of the suite and the payment part use it.
constexpr const char* BlankStyles =
    R"(<?xml version="1.0" encoding="UTF-8" standalone="yes"?>)"
    R"(<w:styles xmlns:w="http://schemas.openxmlformats.org/wordprocessingml/2006/main">)"
    R"(<w:docDefaults><w:rPrDefault><w:rPr><w:rFonts w:ascii="Arial" w:hAnsi="Arial" w:cs="Arial" w:eastAsia="Arial"/>)"
    R"(<w:sz w:val="20"/><w:szCs w:val="20"/><w:lang w:val="de-CH"/></w:rPr></w:rPrDefault></w:docDefaults>)"
    R"(<w:style w:type="paragraph" w:default="1" w:styleId="Standard"><w:name w:val="Normal"/></w:style>)"
    R"(</w:styles>)";

std::unique_ptr<Package> blank() {
    ZipRewriter archive(EmptyArchive);
    archive.add("[Content_Types].xml", BlankContentTypes);
    archive.add("_rels/.rels", BlankPackageRels);
    archive.add("word/document.xml", BlankDocument);
    archive.add("word/_rels/document.xml.rels", BlankDocumentRels);
    archive.add("word/styles.xml", BlankStyles);
    return Package::fromBytes(archive.finish());
}

// The macro project and the parts it refers to, as Word leaves them out of a .docx.
void dropMacros(Package& package, const std::string& main) {
    for (const auto& relationship : package.relationships(main)) {
        if (relationship.type != VbaProjectType) {
            continue;
        }
        const auto project = package.resolveTarget(main, relationship.target);
        for (const auto& inner : package.relationships(project)) {
            if (inner.targetMode.empty()) {
                package.removePart(package.resolveTarget(project, inner.target));
            }
        }
        package.removePart(project);
        package.removeRelationship(main, relationship.id);
    }
}

bool namesMacroForm(const std::string& target) {
    auto extension = std::filesystem::path(target).extension().string();
    for (char& c : extension) {
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    }
    return extension == ".docm";
}

} // namespace

void NewForm::create(const std::string& templatePath, const std::string& target) {
    auto package = templatePath.empty() ? blank() : Package::open(templatePath);
    const auto main = package->mainDocumentPart();
    const bool macro = namesMacroForm(target);
    if (!macro) {
        dropMacros(*package, main);
    }
    // A template's own type (.dotx, .dotm) becomes a document's too.
    const auto wanted = macro ? MacroMainType : PlainMainType;
    if (package->contentType(main) != wanted) {
        package->setBytes(main, package->bytes(main), wanted);
    }
    package->save(target);
}

} // namespace wordbm::ooxml
