// The filled slip as LibreOffice prints it: the QR code reads back to the row's payload at its
// standard size and place, the values stand in their boxes, and an empty amount shows its marks.
#include "RenderedPage.h"
#include "SlipFixture.h"
#include "engine/office/WorkerProgram.h"
#include "engine/word/Document.h"

#include <ZXing/ReadBarcode.h>
#include <cstdlib>
#include <filesystem>
#include <iostream>

namespace wordbm::slip::test {
namespace {

namespace fs = std::filesystem;
using Area = RenderedPage::Area;

constexpr int Dpi = 300;
constexpr double ToleranceMm = 0.5;
// The code's corner: the payment part's left and top, the QR box 1 mm up and left of its place,
// then the text box's inner margins (Word's 0.1 in at the side, 0.05 in above).
constexpr double QrLeftMm = 62 + 5 - 1 + 2.54;
constexpr double QrTopMm = 191 + 17 - 1 + 1.27;
constexpr double QrSizeMm = 46;

// The boxes on the page, with a millimetre's play around them.
constexpr Area ReceiptDetails{3, 202, 58, 259};
constexpr Area ReceiptAmount{23, 258, 58, 274};
constexpr Area ReceiptCurrency{3, 258, 25, 274};
constexpr Area PaymentDetails{116, 195, 206, 282};
constexpr Area PaymentAmount{85, 258, 119, 282};
constexpr Area PaymentCurrency{65, 258, 88, 282};
// The bottom right corners of the amount marks, where nothing else is drawn.
constexpr Area ReceiptMarkCorner{53, 270, 58, 274};
constexpr Area PaymentMarkCorner{112, 275, 117, 279};

std::string decoded(const RenderedPage& page) {
    ZXing::DecodeHints hints;
    hints.setFormats(ZXing::BarcodeFormat::QRCode);
    hints.setTryHarder(true);
    const ZXing::Result result = ZXing::ReadBarcode(
        {page.pixels().data(), page.width(), page.height(), ZXing::ImageFormat::Lum}, hints);
    return result.isValid() ? std::string(result.bytes().begin(), result.bytes().end()) : std::string();
}

class SlipRendering : public SlipTest {
protected:
    void SetUp() override {
        if (office::findWorkerProgram().empty() || !RenderedPage::toolsAvailable()) {
            GTEST_SKIP() << "the LibreOffice worker or poppler-utils missing";
        }
    }

    // The built form, opened afresh and filled from `row`, as the merge run does it per invoice.
    std::string invoice(const std::string& form, std::int32_t row) {
        open(form);
        fill(row);
        const std::string pdf = folder.path() + "/Rechnung-" + std::to_string(row) + ".pdf";
        doc->ExportAsFixedFormat(pdf, word::wd::wdExportFormatPDF);
        if (std::getenv("WORDBM_KEEP_SLIP_PDFS")) {
            fs::copy_file(pdf, fs::temp_directory_path() / fs::path(pdf).filename(),
                          fs::copy_options::overwrite_existing);
        }
        return pdf;
    }

    static void expectIn(const RenderedPage& page, const std::string& word, const Area& box,
                         std::size_t times = 1) {
        EXPECT_EQ(page.wordsIn(word, box).size(), times) << word;
    }
};

TEST_F(SlipRendering, TheCodeReadsBackAt46MillimetresAndTheValuesStandInTheirBoxes) {
    // A form without text of its own: nothing but the slip on the page.
    open("Empty.docx");
    build();
    const std::string form = folder.path() + "/Formular.docx";
    doc->SaveAs2(form);

    const std::string pdf = invoice(form, Normal);
    const RenderedPage page(pdf, Dpi);
    ASSERT_FALSE(page.empty());
    // Headings bold, values regular: both faces are in the file.
    const std::string fonts = RenderedPage::fonts(pdf);
    EXPECT_NE(fonts.find("LiberationSans-Bold "), std::string::npos) << fonts;
    EXPECT_NE(fonts.find("LiberationSans "), std::string::npos) << fonts;
    EXPECT_EQ(decoded(page), coder.QRText(Normal));
    const auto code =
        page.darkArea({QrLeftMm - 3, QrTopMm - 3, QrLeftMm + QrSizeMm + 3, QrTopMm + QrSizeMm + 3});
    ASSERT_TRUE(code) << "no code drawn";
    std::cout << "QR code at " << code->left << " / " << code->top << " mm, " << code->right - code->left
              << " x " << code->bottom - code->top << " mm\n";
    EXPECT_NEAR(code->left, QrLeftMm, ToleranceMm);
    EXPECT_NEAR(code->top, QrTopMm, ToleranceMm);
    EXPECT_NEAR(code->right - code->left, QrSizeMm, ToleranceMm);
    EXPECT_NEAR(code->bottom - code->top, QrSizeMm, ToleranceMm);

    for (const Area& details : {ReceiptDetails, PaymentDetails}) {
        expectIn(page, "CH44", details);
        expectIn(page, "13947", details);
        expectIn(page, "Kilchberg", details);
    }
    expectIn(page, "Zusätzliche", PaymentDetails);
    expectIn(page, "24100", PaymentDetails);
    expectIn(page, "949.75", ReceiptAmount);
    expectIn(page, "949.75", PaymentAmount);
    expectIn(page, "CHF", ReceiptCurrency);
    expectIn(page, "CHF", PaymentCurrency);
    EXPECT_FALSE(page.darkArea(ReceiptMarkCorner));
    EXPECT_FALSE(page.darkArea(PaymentMarkCorner));

    const RenderedPage withoutAmount(invoice(form, NoAmount), Dpi);
    ASSERT_FALSE(withoutAmount.empty());
    EXPECT_EQ(decoded(withoutAmount), coder.QRText(NoAmount));
    EXPECT_TRUE(withoutAmount.darkArea(ReceiptMarkCorner)) << "no amount mark in the receipt";
    EXPECT_TRUE(withoutAmount.darkArea(PaymentMarkCorner)) << "no amount mark in the payment part";
    expectIn(withoutAmount, "949.75", ReceiptAmount, 0);
}

} // namespace
} // namespace wordbm::slip::test
