#include "engine/ooxml/Package.h"

#include "engine/word/AutomationError.h"
#include "ooxml/HandmadeZip.h"
#include "support/FileOps.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <unistd.h>
#include <zip.h>

namespace wordbm::ooxml {
namespace {

namespace fs = std::filesystem;

const fs::path Corpus = fs::path(WORDBM_CORPUS_DIR) / "docx";
constexpr const char* ImageType = "http://schemas.openxmlformats.org/officeDocument/2006/relationships/image";

struct CorpusForm {
    std::string file;
    bool strict;
};

// Every form of the manifest; its note tells which are stored as Strict Open XML.
std::vector<CorpusForm> corpusForms() {
    std::vector<CorpusForm> forms;
    std::ifstream manifest(Corpus / "MANIFEST.tsv");
    std::string line;
    std::getline(manifest, line);
    while (std::getline(manifest, line)) {
        forms.push_back({line.substr(0, line.find('\t')), line.find("Strict OOXML") != std::string::npos});
    }
    return forms;
}

// A zip entry as libzip reads it, independently of the code under test.
struct StoredEntry {
    std::string name, content, compressed;
    int method;
    bool operator==(const StoredEntry&) const = default;
};

std::string readEntry(zip_t* zip, zip_uint64_t index, zip_flags_t flags) {
    std::string bytes(1 << 16, '\0');
    zip_file_t* file = zip_fopen_index(zip, index, flags);
    std::size_t size = 0;
    for (zip_int64_t got; file && (got = zip_fread(file, bytes.data() + size, bytes.size() - size)) > 0;) {
        size += static_cast<std::size_t>(got);
        bytes.resize(std::max(bytes.size(), size * 2));
    }
    zip_fclose(file);
    return bytes.substr(0, size);
}

std::vector<StoredEntry> entriesOf(const std::string& archive) {
    zip_source_t* source = zip_source_buffer_create(archive.data(), archive.size(), 0, nullptr);
    zip_t* zip = zip_open_from_source(source, ZIP_RDONLY, nullptr);
    EXPECT_NE(zip, nullptr);
    std::vector<StoredEntry> entries;
    zip_stat_t stat;
    for (zip_uint64_t i = 0; zip && zip_stat_index(zip, i, 0, &stat) == 0; ++i) {
        entries.push_back(
            {stat.name, readEntry(zip, i, 0), readEntry(zip, i, ZIP_FL_COMPRESSED), stat.comp_method});
    }
    zip ? zip_discard(zip) : zip_source_free(source);
    return entries;
}

std::string corpusBytes(const std::string& file) {
    return readFileBytes((Corpus / file).string()).value_or("");
}

std::unique_ptr<Package> openCorpus(const std::string& file) {
    return Package::open((Corpus / file).string());
}

// --- Every corpus form opens, saves unchanged, and an edit rewrites the edited entry only.

TEST(PackageCorpus, EveryFormOpensAndSavesEntryForEntryIdentical) {
    ASSERT_GT(corpusForms().size(), 50u);
    for (const auto& form : corpusForms()) {
        SCOPED_TRACE(form.file);
        const auto package = openCorpus(form.file);
        if (form.strict) {
            // Read and saved as Word saves it: transitional, entry for entry, nothing Strict left.
            const auto saved = entriesOf(package->saveToBytes());
            const auto stored = entriesOf(corpusBytes(form.file));
            ASSERT_EQ(saved.size(), stored.size());
            for (std::size_t i = 0; i < saved.size(); ++i) {
                EXPECT_EQ(saved[i].name, stored[i].name);
                EXPECT_EQ(saved[i].content.find("purl.oclc.org"), std::string::npos) << saved[i].name;
                EXPECT_EQ(saved[i].content.find("conformance"), std::string::npos) << saved[i].name;
            }
            EXPECT_EQ(package->mainDocumentPart(), "word/document.xml");
            EXPECT_STREQ(package->xml("word/document.xml").document_element().attribute("xmlns:w").value(),
                         "http://schemas.openxmlformats.org/wordprocessingml/2006/main");
            continue;
        }
        for (const auto& name : package->partNames()) {
            if (name.ends_with(".xml") || name.ends_with(".rels")) {
                package->xml(name); // parsed without a change: still copied as it was
            }
        }
        EXPECT_EQ(entriesOf(package->saveToBytes()), entriesOf(corpusBytes(form.file)));
    }
}

TEST(PackageCorpus, EditingOnePartRewritesOnlyThatEntry) {
    for (const auto& form : corpusForms()) {
        if (form.strict) {
            continue;
        }
        SCOPED_TRACE(form.file);
        const auto package = openCorpus(form.file);
        const auto main = package->mainDocumentPart();
        package->xml(main).document_element().append_attribute("wbm").set_value("1");
        package->markModified(main);

        const auto before = entriesOf(corpusBytes(form.file));
        const auto after = entriesOf(package->saveToBytes());
        ASSERT_EQ(after.size(), before.size());
        for (std::size_t i = 0; i < before.size(); ++i) {
            if (before[i].name != main) {
                EXPECT_EQ(after[i], before[i]);
            } else {
                EXPECT_NE(after[i].content.find("wbm=\"1\""), std::string::npos);
                EXPECT_EQ(after[i].method, before[i].method);
            }
        }
    }
}

TEST(PackageCorpus, MacroFormKeepsItsProjectAndContentTypes) {
    const auto package = openCorpus("Macro.docm");
    EXPECT_TRUE(package->isMacroEnabled());
    EXPECT_FALSE(openCorpus("Empty.docx")->isMacroEnabled());
    package->xml("word/document.xml").document_element().append_child("w:p");
    package->markModified("word/document.xml");

    const auto saved = Package::fromBytes(package->saveToBytes());
    EXPECT_TRUE(saved->isMacroEnabled());
    EXPECT_EQ(saved->bytes("word/vbaProject.bin"), openCorpus("Macro.docm")->bytes("word/vbaProject.bin"));
    EXPECT_EQ(saved->contentType("word/vbaProject.bin"), "application/vnd.ms-office.vbaProject");
}

// --- Parts.

TEST(PackageParts, NamesCompareIgnoringCaseButKeepTheirSpelling) {
    const auto package = openCorpus("Empty.docx");
    EXPECT_TRUE(package->hasPart("WORD/Document.XML"));
    EXPECT_EQ(package->resolveTarget("", "Word/Styles.xml"), "word/styles.xml");
    EXPECT_FALSE(package->hasPart("word/")); // a folder entry is no part
    EXPECT_EQ(package->contentType("word/document.xml"),
              "application/vnd.openxmlformats-officedocument.wordprocessingml.document.main+xml");
    EXPECT_EQ(package->contentType("docProps/thumbnail.XML"), "application/xml"); // by the Default
    EXPECT_THROW(package->xml("word/missing.xml"), AutomationError);
}

TEST(PackageParts, AddedPartsComeLastWithTheirContentType) {
    const auto package = openCorpus("Bookmarks.docx");
    package->setBytes("word/media/qr.png", "PNG", "image/png");
    package->setBytes("customXml/extra.xml", "<x/>", "application/xml"); // the Default says so already
    EXPECT_THROW(package->setBytes("../outside.xml", "", ""), AutomationError);
    const auto saved = Package::fromBytes(package->saveToBytes());

    const auto names = saved->partNames();
    EXPECT_EQ(std::vector(names.end() - 2, names.end()),
              (std::vector<std::string>{"word/media/qr.png", "customXml/extra.xml"}));
    EXPECT_EQ(saved->bytes("word/media/qr.png"), "PNG");
    EXPECT_EQ(saved->contentType("word/media/qr.png"), "image/png");
    EXPECT_EQ(saved->bytes("[Content_Types].xml").find("extra.xml"), std::string::npos);
}

TEST(PackageParts, RemovingAPartDropsItsRelationshipsAndOverride) {
    const auto package = openCorpus("Bookmarks.docx");
    ASSERT_TRUE(package->hasPart("word/_rels/document.xml.rels"));
    package->removePart("word/document.xml");
    EXPECT_FALSE(package->hasPart("word/_rels/document.xml.rels"));
    EXPECT_EQ(package->bytes("[Content_Types].xml").find("/word/document.xml"), std::string::npos);

    package->setBytes("word/document.xml", "<w:document/>",
                      "application/vnd.openxmlformats-officedocument.wordprocessingml.document.main+xml");
    const auto names = Package::fromBytes(package->saveToBytes())->partNames();
    EXPECT_EQ(names.back(), "word/document.xml");
    EXPECT_EQ(std::count(names.begin(), names.end(), "word/document.xml"), 1);
}

TEST(PackageParts, ModifiedXmlKeepsDeclarationAndWhitespaceWithoutBom) {
    const auto package =
        Package::fromBytes(test::HandmadeZip::wordDocument(
                               "\xEF\xBB\xBF<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\r\n"
                               "<w:document xmlns:w=\"w\"><w:t> </w:t><w:t/></w:document>")
                               .bytes());
    package->xml("word/document.xml").document_element().last_child().text().set("  Betrag  ");
    package->markModified("word/document.xml");
    EXPECT_EQ(package->bytes("word/document.xml"),
              "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>"
              "<w:document xmlns:w=\"w\"><w:t> </w:t><w:t>  Betrag  </w:t>"
              "</w:document>");
}

TEST(PackageParts, CloneIsIndependentAndHandedOutDocumentsStayPut) {
    const auto original = openCorpus("Empty.docx");
    auto& body = original->xml("word/document.xml");
    body.document_element().append_attribute("edited").set_value("before");
    original->markModified("word/document.xml");

    const auto copy = original->clone();
    copy->xml("word/document.xml").document_element().attribute("edited").set_value("copy");
    copy->setBytes("word/new.xml", "<n/>", "");
    EXPECT_EQ(&original->xml("word/document.xml"), &body);
    EXPECT_NE(original->bytes("word/document.xml").find("edited=\"before\""), std::string::npos);
    EXPECT_NE(copy->bytes("word/document.xml").find("edited=\"copy\""), std::string::npos);
    EXPECT_FALSE(original->hasPart("word/new.xml"));
}

// --- Relationships.

TEST(PackageRelationships, AddedOnesGetFreshIdsAndSurviveSaving) {
    const auto package = openCorpus("Bookmarks.docx");
    const auto before = package->relationships("word/document.xml");
    const auto id = package->addRelationship("word/document.xml", ImageType, "media/qr.png");
    EXPECT_TRUE(std::none_of(before.begin(), before.end(), [&id](const auto& r) { return r.id == id; }));
    EXPECT_NE(package->addRelationship("word/document.xml", "link", "https://example.ch", "External"), id);
    EXPECT_EQ(package->addRelationship("word/settings.xml", ImageType, "media/a.png"), "rId1"); // new .rels

    const auto saved = Package::fromBytes(package->saveToBytes());
    auto after = saved->relationships("word/document.xml");
    ASSERT_EQ(after.size(), before.size() + 2);
    EXPECT_EQ(after[before.size()].target, "media/qr.png");
    EXPECT_EQ(after.back().targetMode, "External");
    EXPECT_EQ(saved->relationships("word/settings.xml").at(0).target, "media/a.png");
    EXPECT_EQ(saved->contentType("word/_rels/settings.xml.rels"),
              "application/vnd.openxmlformats-package.relationships+xml");

    saved->removeRelationship("word/document.xml", id);
    after = saved->relationships("word/document.xml");
    EXPECT_EQ(after.size(), before.size() + 1);
    EXPECT_EQ(after[before.size()].targetMode, "External");
}

TEST(PackageRelationships, TargetsResolveAgainstTheSourceFolder) {
    const auto package = openCorpus("Empty.docx");
    EXPECT_EQ(package->mainDocumentPart(), "word/document.xml");
    EXPECT_EQ(package->resolveTarget("word/document.xml", "../media/x.png"), "media/x.png");
    EXPECT_EQ(package->resolveTarget("word/document.xml", "media/./x.png"), "word/media/x.png");
    EXPECT_EQ(package->resolveTarget("word/document.xml", "/word/x.xml"), "word/x.xml");
    EXPECT_EQ(package->resolveTarget("word/glossary/document.xml", "../../../x.xml"), "x.xml");
}

// --- Saving to a file.

TEST(PackageSave, ReplacesTheTargetAndLeavesNoTemporaryFile) {
    const auto folder = fs::temp_directory_path() / ("wbm-package-" + std::to_string(::getpid()));
    fs::create_directories(folder);
    const auto target = folder / "Rechnung.docx";
    std::ofstream(target) << "old";

    const auto package = openCorpus("Letterhead.docx");
    package->save(target.string());
    EXPECT_EQ(readFileBytes(target.string()), corpusBytes("Letterhead.docx"));
    EXPECT_EQ(std::distance(fs::directory_iterator(folder), fs::directory_iterator()), 1);
    EXPECT_THROW(package->save((folder / "missing" / "x.docx").string()), AutomationError);
    fs::remove_all(folder);
}

} // namespace
} // namespace wordbm::ooxml
