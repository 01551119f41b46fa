#include "engine/ooxml/Package.h"
#include "engine/word/AutomationError.h"
#include "ooxml/HandmadeZip.h"
#include "support/FileOps.h"

#include <gtest/gtest.h>

namespace wordbm::ooxml {
namespace {

using test::HandmadeZip;

constexpr const char* Body =
    R"(<w:document xmlns:w="http://schemas.openxmlformats.org/wordprocessingml/2006/main">)"
    R"(<w:body><w:p/></w:body></w:document>)";

// The description a refused package gets; empty when it was (wrongly) accepted.
std::string refusal(const std::string& bytes, const PackageLimits& limits = {}) {
    try {
        Package::fromBytes(bytes, limits);
    } catch (const AutomationError& error) {
        return error.what();
    }
    return {};
}

bool mentions(const std::string& text, const char* words) {
    return text.find(words) != std::string::npos;
}

// --- Files that are no Word package at all.

TEST(PackageHostile, EmptyNonZipTruncatedAndOtherOfficeFilesGetAClearMessage) {
    EXPECT_TRUE(mentions(refusal(""), "kein gültiges Word-Dokument"));
    EXPECT_TRUE(mentions(refusal("Name;Betrag\r\nMuster;12.50\r\n"), "beschädigtes ZIP-Archiv"));
    EXPECT_TRUE(mentions(refusal(std::string("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1", 8) + std::string(600, '\0')),
                         "Kennwort"));
    const auto form = readFileBytes(std::string(WORDBM_CORPUS_DIR) + "/docx/Bookmarks.docx").value_or("");
    ASSERT_FALSE(form.empty());
    for (const auto keep : {form.size() / 2, form.size() - 10, form.size() - 1}) {
        EXPECT_TRUE(mentions(refusal(form.substr(0, keep)), "beschädigt")) << keep;
    }
    EXPECT_THROW(Package::open("/nonexistent/Rechnung.docx"), AutomationError);

    HandmadeZip noContentTypes;
    noContentTypes.addStored("word/document.xml", Body);
    EXPECT_TRUE(mentions(refusal(noContentTypes.bytes()), "[Content_Types].xml"));
    const auto sheet = HandmadeZip::wordDocument(
        "<workbook/>", "application/vnd.openxmlformats-officedocument.spreadsheetml.sheet.main+xml");
    EXPECT_TRUE(mentions(refusal(sheet.bytes()), "kein Word-Dokument"));
}

// --- Names that could reach outside the package, or name a part twice.

TEST(PackageHostile, UnsafeAndRepeatedEntryNamesAreRefused) {
    for (const char* name : {"../evil.xml", "/etc/evil.xml", "word/../../evil.xml", "C:/evil.xml",
                             "word\\..\\evil.xml", "word//evil.xml"}) {
        auto zip = HandmadeZip::wordDocument(Body);
        zip.addStored(name, "<x/>");
        EXPECT_TRUE(mentions(refusal(zip.bytes()), "unzulässiger Name")) << name;
    }
    for (const char* name : {"word/document.xml", "WORD/Document.xml"}) {
        auto zip = HandmadeZip::wordDocument(Body);
        zip.addStored(name, Body);
        EXPECT_TRUE(mentions(refusal(zip.bytes()), "mehrfach")) << name;
    }
}

// --- Archives built to exhaust memory.

TEST(PackageHostile, GigabyteOfZerosIsRefusedWhateverSizeItDeclares) {
    auto honest = HandmadeZip::wordDocument(Body);
    honest.addZeros("word/media/image1.png", 1u << 30);
    EXPECT_TRUE(mentions(refusal(honest.bytes()), "zu gross"));
    for (const std::uint32_t declared : {1000u, 60u << 20}) { // tiny, and just under the part limit
        auto lying = HandmadeZip::wordDocument(Body);
        lying.addZeros("word/media/image1.png", 1u << 30, declared);
        EXPECT_TRUE(mentions(refusal(lying.bytes()), "grösser als angegeben")) << declared;
    }
}

TEST(PackageHostile, LimitsOnRatioEntryCountAndTotalSizeHold) {
    auto squeezed = HandmadeZip::wordDocument(Body);
    squeezed.addZeros("word/media/image1.png", 4u << 20);
    EXPECT_EQ(refusal(squeezed.bytes()), ""); // 160:1 is within the default limits
    PackageLimits limits;
    limits.maxCompressionRatio = 100.0;
    EXPECT_TRUE(mentions(refusal(squeezed.bytes(), limits), "stark komprimiert"));
    limits = {};
    limits.maxTotalSize = 6u << 20;
    squeezed.addZeros("word/media/image2.png", 4u << 20);
    EXPECT_TRUE(mentions(refusal(squeezed.bytes(), limits), "zusammen zu gross"));

    auto crowded = HandmadeZip::wordDocument(Body);
    for (int i = 0; i < 5000; ++i) {
        crowded.addStored("word/media/p" + std::to_string(i) + ".bin", "");
    }
    EXPECT_TRUE(mentions(refusal(crowded.bytes()), "mehr als 5000 Teile"));
}

// --- XML that is hostile or broken.

TEST(PackageHostile, DocumentTypesAreRefusedBeforeParsing) {
    const auto external =
        HandmadeZip::wordDocument(R"(<?xml version="1.0"?><!DOCTYPE w:document [)"
                                  R"(<!ENTITY xxe SYSTEM "file:///etc/passwd">]><x>&xxe;</x>)");
    EXPECT_TRUE(mentions(refusal(external.bytes()), "DOCTYPE"));

    std::string laughs = R"(<!DOCTYPE lolz [<!ENTITY lol0 "lol">)";
    for (int level = 1; level <= 9; ++level) {
        laughs += "<!ENTITY lol" + std::to_string(level) + " \"";
        for (int copy = 0; copy < 10; ++copy) {
            laughs += "&lol" + std::to_string(level - 1) + ";";
        }
        laughs += "\">";
    }
    auto zip = HandmadeZip::wordDocument(Body);
    zip.addStored("word/styles.xml", laughs + "]><lolz>&lol9;</lolz>");
    const auto package = Package::fromBytes(zip.bytes()); // other parts are parsed when first used
    EXPECT_THROW(package->xml("word/styles.xml"), AutomationError);

    std::string utf16 = "\xFF\xFE";
    for (const char c : std::string("<!doctype x><x/>")) {
        utf16 += {c, '\0'};
    }
    package->setBytes("word/footer1.xml", utf16, "");
    EXPECT_THROW(package->xml("word/footer1.xml"), AutomationError);
}

TEST(PackageHostile, MalformedXmlNamesThePartAndStaysUntouched) {
    EXPECT_TRUE(mentions(refusal(HandmadeZip::wordDocument("<w:document><w:body></w:document>").bytes()),
                         "«word/document.xml»"));
    auto zip = HandmadeZip::wordDocument(Body);
    zip.addStored("word/header1.xml", "<w:hdr>");
    const auto package = Package::fromBytes(zip.bytes());
    EXPECT_THROW(package->xml("word/header1.xml"), AutomationError);
    EXPECT_EQ(package->bytes("word/header1.xml"), "<w:hdr>");
}

TEST(PackageHostile, DeeplyNestedXmlParsesClonesAndSaves) {
    constexpr int Depth = 200000;
    std::string deep = "<w:document>";
    for (int i = 0; i < Depth; ++i) {
        deep += "<w:p>";
    }
    for (int i = 0; i < Depth; ++i) {
        deep += "</w:p>";
    }
    const auto package = Package::fromBytes(HandmadeZip::wordDocument(deep + "</w:document>").bytes());
    package->xml("word/document.xml").document_element().append_attribute("x");
    package->markModified("word/document.xml");

    const auto saved = Package::fromBytes(package->clone()->saveToBytes());
    auto node = saved->xml("word/document.xml").document_element();
    EXPECT_TRUE(node.attribute("x"));
    int depth = 0;
    for (; node.first_child(); node = node.first_child()) {
        ++depth;
    }
    EXPECT_EQ(depth, Depth);
}

} // namespace
} // namespace wordbm::ooxml
