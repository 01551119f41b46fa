#include "engine/ooxml/NewForm.h"

#include "CorpusFiles.h"
#include "engine/ooxml/DocxApplication.h"
#include "engine/ooxml/Package.h"
#include "engine/ooxml/TemporaryFolder.h"
#include "engine/word/Bookmarks.h"
#include "engine/word/Document.h"
#include "engine/word/Documents.h"
#include "engine/word/Range.h"
#include "engine/word/Sections.h"
#include "support/FileOps.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace wordbm::ooxml {
namespace {

using test::corpusPath;

std::string mainText(const std::string& path) {
    return DocxApplication::create()->Documents()->Open(path)->Content()->Text();
}

bool hasMacroProject(Package& package) {
    for (const auto& relationship : package.relationships(package.mainDocumentPart())) {
        if (relationship.type.ends_with("/vbaProject")) {
            return true;
        }
    }
    return package.hasPart("word/vbaProject.bin");
}

TEST(NewForm, BlankFormIsOneEmptyA4PageOfTheKindItsNameSays) {
    TemporaryFolder folder;
    const auto plain = folder.path() + "/Neu.docx";
    const auto macro = folder.path() + "/Neu.DOCM";
    NewForm::create("", plain);
    NewForm::create("", macro);

    auto doc = DocxApplication::create()->Documents()->Open(plain);
    EXPECT_EQ(doc->Content()->Text(), "\r");
    EXPECT_EQ(doc->Sections()->Count(), 1);
    EXPECT_FALSE(Package::open(plain)->isMacroEnabled());
    EXPECT_TRUE(Package::open(macro)->isMacroEnabled());
    EXPECT_EQ(mainText(macro), "\r");
}

TEST(NewForm, TemplateIsCopiedAndBecomesTheKindOfItsNewName) {
    TemporaryFolder folder;
    const auto formTemplate = corpusPath("Macro.docm");
    const auto before = readFileBytes(formTemplate);
    const auto plain = folder.path() + "/Rechnung.docx";
    NewForm::create(formTemplate, plain);
    auto package = Package::open(plain);
    EXPECT_FALSE(package->isMacroEnabled());
    EXPECT_FALSE(hasMacroProject(*package));
    EXPECT_FALSE(package->hasPart("word/vbaData.xml"));
    EXPECT_EQ(mainText(plain), mainText(formTemplate));
    EXPECT_EQ(readFileBytes(formTemplate), before);

    // A plain form saved as .docm gains the macro-enabled type, and keeps everything else.
    const auto macro = folder.path() + "/Rechnung.docm";
    NewForm::create(corpusPath("Bookmarks.docx"), macro);
    EXPECT_TRUE(Package::open(macro)->isMacroEnabled());
    EXPECT_EQ(mainText(macro), mainText(corpusPath("Bookmarks.docx")));
    EXPECT_EQ(DocxApplication::create()->Documents()->Open(macro)->Bookmarks()->Count(), 3);
}

TEST(NewForm, MissingTemplateLeavesNoFileBehind) {
    TemporaryFolder folder;
    const auto target = folder.path() + "/Rechnung.docx";
    EXPECT_ANY_THROW(NewForm::create(folder.path() + "/fehlt.docx", target));
    EXPECT_FALSE(std::filesystem::exists(target));
}

} // namespace
} // namespace wordbm::ooxml
