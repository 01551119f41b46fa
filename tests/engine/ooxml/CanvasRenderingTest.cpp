// LibreOffice draws the VML fallback of a canvas; these tests check that what it draws sits where
// the DrawingML says, for a payment part built here and for Word's own canvases.
#include "CanvasZip.h"
#include "PartXml.h"
#include "PaymentPartSample.h"
#include "RenderedPdf.h"
#include "engine/ooxml/ShapeFinder.h"
#include "engine/ooxml/VmlFallback.h"

#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <iostream>
#include <unistd.h>

namespace wordbm::ooxml::canvastest {
namespace {

namespace fs = std::filesystem;

constexpr double ToleranceMm = 0.5;
constexpr int Dpi = 300;
constexpr const char* OldAmount = "1 949.75";
// Starts with another word, so that the place checked is the new value's.
constexpr const char* NewAmount = "12 500.00";
// LibreOffice sets Arial (Liberation Sans) lines 1.15 times the font size apart.
constexpr double LineHeightPerPoint = 1.15 * 25.4 / 72.0;

struct Expected {
    std::string word;
    double leftMm;
    double topMm;
};

// Each test converts its documents in a single LibreOffice run: a cold start costs seconds, and
// CTest runs every test in a process of its own.
class CanvasRendering : public ::testing::Test {
protected:
    void SetUp() override {
        if (!RenderedPdf::toolsAvailable()) {
            GTEST_SKIP() << "LibreOffice or poppler-utils missing";
        }
        work_ = fs::temp_directory_path() / ("wordbm-canvas-" + std::to_string(::getpid()));
        fs::create_directories(work_);
    }

    // WORDBM_KEEP_CANVAS_PDFS keeps the documents and PDFs for a look by eye.
    void TearDown() override {
        if (!work_.empty() && !std::getenv("WORDBM_KEEP_CANVAS_PDFS")) {
            std::error_code ignored;
            fs::remove_all(work_, ignored);
        }
    }

    // A second session: reopen the saved file, change a value in a text box, save again.
    static void editAndSave(const fs::path& from, const fs::path& to) {
        CanvasZip zip = CanvasZip::read(from);
        const auto document = PartXml::parse(zip.at("word/document.xml"));
        EXPECT_TRUE(PaymentPartSample::replaceText(PartXml::root(*document), OldAmount, NewAmount));
        zip["word/document.xml"] = PartXml::text(*document);
        zip.write(to);
    }

    // Rebuilds the fallback of every canvas in the main text and the first header.
    static void rebuildCanvases(const fs::path& from, const fs::path& to) {
        CanvasZip zip = CanvasZip::read(from);
        std::size_t rebuilt = 0;
        for (const char* name : {"word/document.xml", "word/header1.xml"}) {
            const auto part = PartXml::parse(zip.at(name));
            rebuilt += VmlFallback::regenerateCanvases(PartXml::root(*part));
            zip[name] = PartXml::text(*part);
        }
        EXPECT_GT(rebuilt, 0U) << from.filename();
        zip.write(to);
    }

    // Where the first line of each box begins: box corner plus the inner margins, later lines
    // below the earlier ones.
    static std::vector<Expected> expectedWords(bool edited) {
        using Sample = PaymentPartSample;
        std::vector<Expected> all;
        for (const Sample::Box& box : Sample::boxes()) {
            double top = Sample::CanvasTopMm + box.top - Sample::BoxShiftMm + Sample::InsetTopMm;
            const double left = Sample::CanvasLeftMm + box.left - Sample::BoxShiftMm + Sample::InsetLeftMm;
            for (const Sample::Line& line : box.lines) {
                const std::string text = edited && line.text == OldAmount ? NewAmount : line.text;
                all.push_back({text.substr(0, text.find(' ')), left, top});
                top += line.size * LineHeightPerPoint;
            }
        }
        return all;
    }

    static void expectWordsInPlace(const fs::path& pdf, bool edited) {
        for (const Expected& expected : expectedWords(edited)) {
            const auto found = RenderedPdf::word(pdf, expected.word);
            ASSERT_TRUE(found) << expected.word << " missing in " << pdf.filename();
            std::cout << pdf.filename().string() << " " << expected.word << ": dx "
                      << found->left - expected.leftMm << " mm, dy " << found->top - expected.topMm
                      << " mm\n";
            EXPECT_NEAR(found->left, expected.leftMm, ToleranceMm) << expected.word;
            EXPECT_NEAR(found->top, expected.topMm, ToleranceMm) << expected.word;
        }
    }

    static void expectQrCodeInPlace(const fs::path& pdf) {
        using Sample = PaymentPartSample;
        const double left = Sample::CanvasLeftMm + Sample::QrLeftMm - Sample::BoxShiftMm;
        const double top = Sample::CanvasTopMm + Sample::QrTopMm - Sample::BoxShiftMm;
        // Clear of the frame's border, the title above, the currency below and the details beside.
        const RenderedPdf::Area window{left - 3.0, top - 3.0, left + Sample::QrSizeMm + 3.0,
                                       top + Sample::QrSizeMm + 3.0};
        const auto code = RenderedPdf::darkArea(pdf, window, Dpi);
        ASSERT_TRUE(code) << "no QR code drawn in " << pdf.filename();
        std::cout << pdf.filename().string() << " QR code: left " << code->left - left << " mm, top "
                  << code->top - top << " mm, size " << code->right - code->left << " x "
                  << code->bottom - code->top << " mm\n";
        EXPECT_NEAR(code->left, left, ToleranceMm);
        EXPECT_NEAR(code->top, top, ToleranceMm);
        EXPECT_NEAR(code->right, left + Sample::QrSizeMm, ToleranceMm);
        EXPECT_NEAR(code->bottom, top + Sample::QrSizeMm, ToleranceMm);
    }

    fs::path work_;
};

TEST_F(CanvasRendering, PaymentPartSitsWhereTheCanvasPutsItAlsoAfterASecondEditAndSave) {
    const fs::path built = work_ / "payment-part.docx";
    PaymentPartSample::build().write(built);
    const fs::path edited = work_ / "payment-part-edited.docx";
    editAndSave(built, edited);
    const auto pdfs = RenderedPdf::convert({built, edited}, work_);
    ASSERT_EQ(pdfs.size(), 2U) << "LibreOffice did not convert the documents";

    expectWordsInPlace(pdfs[0], false);
    expectQrCodeInPlace(pdfs[0]);
    const std::string fonts = RenderedPdf::fonts(pdfs[0]);
    EXPECT_NE(fonts.find("Bold"), std::string::npos) << fonts;
    const auto title = RenderedPdf::word(pdfs[0], "Zahlteil");
    const auto heading = RenderedPdf::word(pdfs[0], "Konto");
    const auto value = RenderedPdf::word(pdfs[0], "CH44");
    ASSERT_TRUE(title && heading && value);
    const double valueHeight = value->bottom - value->top;
    EXPECT_NEAR((title->bottom - title->top) / valueHeight, 11.0 / 10.0, 0.03);
    EXPECT_NEAR((heading->bottom - heading->top) / valueHeight, 8.0 / 10.0, 0.03);

    EXPECT_NE(RenderedPdf::text(pdfs[1]).find(NewAmount), std::string::npos);
    EXPECT_EQ(RenderedPdf::text(pdfs[1]).find(OldAmount), std::string::npos);
    expectWordsInPlace(pdfs[1], true);
    expectQrCodeInPlace(pdfs[1]);
}

// Word's canvases: a logo of freeforms and a rule in a header (stress017), shapes coloured by the
// theme (DrawingML shape effects).
TEST_F(CanvasRendering, WordCanvasesWithRebuiltFallbackRenderAsBefore) {
    std::vector<fs::path> documents;
    for (const auto& [file, copy] : {std::pair{"stress017.docx", "header-canvases"},
                                     std::pair{"DrawingML shape effects.docx", "theme-canvases"}}) {
        const fs::path original = work_ / (std::string(copy) + ".docx");
        fs::copy_file(fs::path(WORDBM_CORPUS_DIR) / "docx" / file, original);
        const fs::path rebuilt = work_ / (std::string(copy) + "-rebuilt.docx");
        rebuildCanvases(original, rebuilt);
        documents.insert(documents.end(), {original, rebuilt});
    }
    const auto pdfs = RenderedPdf::convert(documents, work_);
    ASSERT_EQ(pdfs.size(), documents.size()) << "LibreOffice did not convert the documents";

    for (std::size_t pair = 0; pair < pdfs.size(); pair += 2) {
        const auto before = RenderedPdf::words(pdfs[pair]);
        const auto after = RenderedPdf::words(pdfs[pair + 1]);
        ASSERT_FALSE(before.empty());
        ASSERT_EQ(before.size(), after.size());
        for (std::size_t index = 0; index < before.size(); ++index) {
            EXPECT_EQ(after[index].text, before[index].text);
            EXPECT_NEAR(after[index].left, before[index].left, 0.05) << before[index].text;
            EXPECT_NEAR(after[index].top, before[index].top, 0.05) << before[index].text;
        }
        EXPECT_EQ(RenderedPdf::text(pdfs[pair + 1]), RenderedPdf::text(pdfs[pair]));
        // Outlines, fills and places are drawn as before.
        EXPECT_EQ(RenderedPdf::differingPixels(pdfs[pair], pdfs[pair + 1], 100),
                  std::optional<std::size_t>(0))
            << pdfs[pair].filename();
    }
}

} // namespace
} // namespace wordbm::ooxml::canvastest
