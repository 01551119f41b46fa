#include "CorpusFiles.h"
#include "HandmadeDocument.h"
#include "engine/ooxml/DocxApplication.h"
#include "engine/ooxml/TemporaryFolder.h"
#include "engine/word/AutomationError.h"
#include "engine/word/Bookmarks.h"
#include "engine/word/Document.h"
#include "engine/word/Documents.h"
#include "engine/word/Range.h"
#include "engine/word/Selection.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

namespace wordbm::ooxml {
namespace {

using test::corpusPath;

TEST(Documents, OpenRefusesMissingAndForeignFilesWithAMessage) {
    auto app = DocxApplication::create();
    TemporaryFolder folder;
    const auto text = folder.path() + "/notiz.docx";
    std::ofstream(text) << "kein Word-Dokument";
    for (const auto& path : {folder.path() + "/fehlt.docx", text}) {
        try {
            app->Documents()->Open(path);
            ADD_FAILURE() << path << " opened";
        } catch (const AutomationError& error) {
            EXPECT_FALSE(error.Description().empty());
        }
    }
    EXPECT_EQ(app->Documents()->Count(), 0);
    EXPECT_THROW(app->ActiveDocument(), AutomationError);
}

// A merge reopens its working form for every invoice from the parse kept at the first open.
TEST(Documents, ReopeningGivesTheFileAsItIsOnDisk) {
    auto app = DocxApplication::create();
    TemporaryFolder folder;
    const auto form = folder.path() + "/Formular.docx";
    std::filesystem::copy_file(corpusPath("Bookmarks.docx"), form);
    const auto original = app->Documents()->Open(form)->Content()->Text();

    // Edits of a document closed without saving do not reach the next open.
    auto edited = app->Documents()->Open(form);
    edited->Content()->Text("verändert");
    edited->Close(0);
    auto reopened = app->Documents()->Open(form);
    EXPECT_EQ(reopened->Content()->Text(), original);
    EXPECT_EQ(reopened->Bookmarks()->Count(), 3);

    // A file changed on disk is read anew.
    reopened->Content()->Text("neu");
    reopened->Save();
    reopened->Close(0);
    EXPECT_EQ(app->Documents()->Open(form)->Content()->Text(), "neu\r");
}

TEST(Documents, CountsOpenDocumentsAndTheLastOpenedIsActive) {
    auto app = DocxApplication::create();
    auto first = app->Documents()->Open(corpusPath("Bookmarks.docx"));
    auto second = app->Documents()->Open(corpusPath("Macro.docm"));
    EXPECT_EQ(app->Documents()->Count(), 2);
    EXPECT_EQ(app->ActiveDocument(), second);
    EXPECT_EQ(app->Documents()->Item(1)->Name(), "Bookmarks.docx");
    EXPECT_EQ(app->Documents()->Open(corpusPath("Bookmarks.docx")), first)
        << "the same file is the same document";
    EXPECT_EQ(app->ActiveDocument(), first);
    second->Close();
    EXPECT_EQ(app->Documents()->Count(), 1);
    EXPECT_THROW(second->Bookmarks(), AutomationError);
    EXPECT_THROW(app->Documents()->Item(2), AutomationError);
}

TEST(Documents, ObjectsOfAClosedDocumentThrowInsteadOfReadingFreedMemory) {
    auto app = DocxApplication::create();
    auto document = app->Documents()->Open(corpusPath("bmk-bookmarks.docx"));
    auto range = document->Content();
    auto bookmark = document->Bookmarks()->Item(1);
    auto cursor = app->Selection();
    document->Close(word::wd::wdDoNotSaveChanges);
    EXPECT_THROW(range->Text(), AutomationError);
    EXPECT_THROW(bookmark->Range(), AutomationError);
    EXPECT_THROW(cursor->TypeText("x"), AutomationError);
}

TEST(Documents, NameAndPathFollowSaveAs2AndMacrosStayInADocm) {
    auto app = DocxApplication::create();
    TemporaryFolder folder;
    auto document = app->Documents()->Open(corpusPath("Macro.docm"));
    EXPECT_EQ(document->Name(), "Macro.docm");
    document->Content()->InsertAfter("x");
    EXPECT_FALSE(document->Saved());
    document->SaveAs2(folder.path() + "/Rechnung 1.docm");
    EXPECT_TRUE(document->Saved());
    EXPECT_EQ(document->Name(), "Rechnung 1.docm");
    EXPECT_EQ(document->Path(), folder.path());
    EXPECT_EQ(document->FullName(), folder.path() + "/Rechnung 1.docm");
    document->Close();
    auto reopened = app->Documents()->Open(folder.path() + "/Rechnung 1.docm");
    EXPECT_NE(reopened->Content()->Text().find("x"), std::string::npos);
}

TEST(Application, AfterQuitEveryCallFails) {
    auto app = DocxApplication::create();
    TemporaryFolder folder;
    const auto path = test::handmadeDocument(folder.path(), "<w:p><w:r><w:t>a</w:t></w:r></w:p>");
    auto document = app->Documents()->Open(path);
    app->Selection()->TypeText("b");
    app->Quit();
    EXPECT_THROW(app->Documents(), AutomationError);
    EXPECT_THROW(document->Name(), AutomationError);
    auto again = DocxApplication::create();
    EXPECT_EQ(again->Documents()->Open(path)->Content()->Text(), "a\r")
        << "Quit without an answer drops changes";
}

TEST(Application, QuitWithSaveChangesSavesEveryDocument) {
    auto app = DocxApplication::create();
    TemporaryFolder folder;
    const auto path = test::handmadeDocument(folder.path(), "<w:p><w:r><w:t>a</w:t></w:r></w:p>");
    app->Documents()->Open(path);
    app->Selection()->TypeText("b");
    app->Quit(word::wd::wdSaveChanges);
    EXPECT_EQ(DocxApplication::create()->Documents()->Open(path)->Content()->Text(), "ba\r");
}

TEST(HostileForms, ManyBookmarksAreListedAndAddedToWithoutTrouble) {
    std::string body = "<w:p>";
    for (int i = 0; i < 100000; ++i) {
        const auto id = std::to_string(i);
        body += "<w:bookmarkStart w:id=\"" + id + "\" w:name=\"b" + id +
                "\"/><w:r><w:t>x</w:t></w:r><w:bookmarkEnd w:id=\"" + id + "\"/>";
    }
    body += "</w:p>";
    TemporaryFolder folder;
    auto app = DocxApplication::create();
    auto document = app->Documents()->Open(test::handmadeDocument(folder.path(), body));
    auto bookmarks = document->Bookmarks();
    EXPECT_EQ(bookmarks->Count(), 100000);
    int named = 0;
    for (int i = 1; i <= bookmarks->Count(); ++i) {
        named += bookmarks->Item(i)->Name().front() == 'b' ? 1 : 0;
    }
    EXPECT_EQ(named, 100000) << "walking the collection by index stays linear";
    bookmarks->Add("neu", document->Range(5, 6));
    EXPECT_EQ(bookmarks->Item("b99999")->Range()->Text(), "x");
    EXPECT_EQ(bookmarks->Count(), 100001);
}

} // namespace
} // namespace wordbm::ooxml
