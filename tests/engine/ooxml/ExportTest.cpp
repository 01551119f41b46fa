#include "WordSession.h"
#include "engine/office/WorkerProgram.h"
#include "engine/ooxml/TemporaryFolder.h"
#include "engine/word/AutomationError.h"

#include <array>
#include <cstdio>
#include <gtest/gtest.h>
#include <memory>

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

} // namespace
} // namespace wordbm::ooxml
