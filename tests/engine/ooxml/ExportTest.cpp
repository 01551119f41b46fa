#include "CorpusFiles.h"
#include "RenderedPdf.h"
#include "WordSession.h"
#include "engine/office/WorkerProgram.h"
#include "engine/ooxml/TemporaryFolder.h"
#include "engine/word/AutomationError.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdio>
#include <filesystem>
#include <gtest/gtest.h>
#include <memory>
#include <set>

namespace wordbm::ooxml {
namespace {

std::string pdfText(const std::string& pdf) {
    const auto command = "pdftotext -layout '" + pdf + "' - 2>/dev/null";
    std::unique_ptr<FILE, int (*)(FILE*)> pipe(::popen(command.c_str(), "r"), ::pclose);
    std::string text;
    std::array<char, 4096> buffer{};
    while (pipe && std::fgets(buffer.data(), static_cast<int>(buffer.size()), pipe.get())) {
        text += buffer.data();
    }
    return text;
}

TEST(PdfExport, ExportsTheDocumentAsItStandsNowNotAsItWasSaved) {
    if (office::findWorkerProgram().empty()) {
        GTEST_SKIP() << "the LibreOffice worker is not built";
    }
    test::WordSession session("bmk-bookmarks.docx");
    session.document()->Bookmarks()->Item("bookmark_body")->Select();
    session.selection()->TypeText("[KliName]");
    TemporaryFolder folder;
    const auto pdf = folder.path() + "/Rechnung.pdf";
    session.document()->ExportAsFixedFormat(pdf, word::wd::wdExportFormatPDF, false);
    const auto text = pdfText(pdf);
    EXPECT_NE(text.find("[KliName]"), std::string::npos) << text;
    EXPECT_EQ(text.find("Bookmark_body"), std::string::npos);
    EXPECT_FALSE(session.document()->Saved()) << "exporting is not saving";
    EXPECT_THROW(session.document()->ExportAsFixedFormat(folder.path() + "/x.xps", 18), AutomationError);
}

// The saved invoice is what the worker reads, as long as nothing changed after the save.
TEST(PdfExport, AfterSavingExportsTheSavedFileUntilTheNextChange) {
    if (office::findWorkerProgram().empty()) {
        GTEST_SKIP() << "the LibreOffice worker is not built";
    }
    test::WordSession session("bmk-bookmarks.docx");
    TemporaryFolder folder;
    const auto saved = folder.path() + "/Rechnung.docx";
    const auto pdf = folder.path() + "/Rechnung.pdf";
    session.document()->Bookmarks()->Item("bookmark_body")->Select();
    session.selection()->TypeText("Gespeichert");
    session.document()->SaveAs2(saved);
    session.document()->ExportAsFixedFormat(pdf, word::wd::wdExportFormatPDF, false);
    EXPECT_NE(pdfText(pdf).find("Gespeichert"), std::string::npos);

    session.selection()->TypeText(" und danach geändert");
    session.document()->ExportAsFixedFormat(pdf, word::wd::wdExportFormatPDF, false);
    EXPECT_NE(pdfText(pdf).find("und danach"), std::string::npos) << "the change after the save is missing";
    EXPECT_FALSE(session.document()->Saved());
}

// Words of five letters or more, which a PDF of the text shows unbroken.
std::set<std::string> longWords(const std::string& text) {
    std::set<std::string> words;
    std::string current;
    for (const char c : text + ' ') {
        if (std::isalpha(static_cast<unsigned char>(c))) {
            current += c;
            continue;
        }
        if (current.size() >= 5) {
            words.insert(current);
        }
        current.clear();
    }
    return words;
}

// Through the worker every corpus document comes out as LibreOffice's own converter makes it of
// the same file (one soffice run for all of them), and a refusal is the worker's fault only when
// soffice made a PDF of the document.
TEST(PdfExport, EveryCorpusDocumentConvertsThroughTheWorkerAsLibreOfficeConvertsIt) {
    if (office::findWorkerProgram().empty() || !canvastest::RenderedPdf::toolsAvailable()) {
        GTEST_SKIP() << "the LibreOffice worker or soffice and poppler are missing";
    }
    TemporaryFolder folder;
    const std::filesystem::path soffice = std::filesystem::path(folder.path()) / "soffice";
    std::filesystem::create_directories(soffice);
    std::vector<std::filesystem::path> originals;
    for (const auto& name : test::corpusDocuments()) {
        originals.push_back(test::corpusPath(name));
    }
    canvastest::RenderedPdf::convert(originals, soffice);
    int converted = 0;
    for (const auto& original : originals) {
        const auto name = original.filename().string();
        const auto reference = soffice / original.filename().replace_extension(".pdf");
        test::WordSession session(name);
        const auto pdf = folder.path() + "/" + original.stem().string() + ".pdf";
        try {
            session.document()->ExportAsFixedFormat(pdf, word::wd::wdExportFormatPDF, false);
        } catch (const AutomationError& failure) {
            EXPECT_FALSE(std::filesystem::exists(reference))
                << name << " converts with soffice, but through the worker: " << failure.what();
            continue;
        }
        ++converted;
        if (std::filesystem::exists(reference)) {
            EXPECT_EQ(longWords(pdfText(pdf)), longWords(pdfText(reference.string()))) << name;
        }
    }
    EXPECT_GE(converted, 58);
}

} // namespace
} // namespace wordbm::ooxml
