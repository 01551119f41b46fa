// The filled slip as LibreOffice prints it: the QR code reads back to the row's payload at its
// standard size and place, the values stand in their boxes, an empty amount shows its marks.
#include "SlipFixture.h"
#include "engine/office/WorkerProgram.h"
#include "engine/word/Document.h"

#include <ZXing/ReadBarcode.h>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <regex>
#include <sstream>

namespace wordbm::slip::test {
namespace {

struct Area {
    double left, top, right, bottom; // millimetres from the page's top left
};

constexpr int Dpi = 300;
// The code's corner: the payment part's place, the QR box 1 mm up and left, Word's inner margins.
constexpr double QrLeft = 62 + 5 - 1 + 2.54, QrTop = 191 + 17 - 1 + 1.27, QrSize = 46;
constexpr Area ReceiptDetails{3, 202, 58, 259}, PaymentDetails{116, 195, 206, 282};
constexpr Area ReceiptAmount{23, 258, 58, 274}, PaymentAmount{85, 258, 119, 282};
// The bottom right corners of the amount marks, where nothing else is drawn.
constexpr Area ReceiptMarkCorner{53, 270, 58, 274}, PaymentMarkCorner{112, 275, 117, 279};

std::string slurp(const std::string& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

// Page 1 in grey at Dpi, its words with their boxes (pdftotext -bbox, in points) and its fonts.
struct Page {
    explicit Page(const std::string& pdf) {
        const std::string base = pdf.substr(0, pdf.size() - 4);
        const std::string dpi = std::to_string(Dpi);
        const std::string commands = "pdftoppm -gray -singlefile -r " + dpi + " '" + pdf + "' '" + base +
                                     "' && pdftotext -bbox '" + pdf + "' '" + base + ".html' && pdffonts '" +
                                     pdf + "' > '" + base + ".fonts'";
        if (std::system(commands.c_str()) != 0) {
            return;
        }
        std::istringstream in(slurp(base + ".pgm"));
        std::string magic;
        int maximum = 0;
        in >> magic >> width >> height >> maximum;
        in.get();
        grey.resize(static_cast<std::size_t>(width) * height);
        in.read(reinterpret_cast<char*>(grey.data()), static_cast<std::streamsize>(grey.size()));
        html = slurp(base + ".html");
        fonts = slurp(base + ".fonts");
    }

    std::optional<Area> darkArea(const Area& window) const {
        const double perMm = Dpi / 25.4;
        int left = width, top = height, right = -1, bottom = -1;
        for (int y = int(window.top * perMm); y < int(window.bottom * perMm); ++y) {
            for (int x = int(window.left * perMm); x < int(window.right * perMm); ++x) {
                if (grey[static_cast<std::size_t>(y) * width + x] < 128) {
                    left = std::min(left, x), right = std::max(right, x), top = std::min(top, y);
                    bottom = std::max(bottom, y);
                }
            }
        }
        return right < 0 ? std::nullopt
                         : std::optional(
                               Area{left / perMm, top / perMm, (right + 1) / perMm, (bottom + 1) / perMm});
    }

    int wordsIn(const std::string& text, const Area& box) const {
        static const std::regex word(
            R"re(xMin="([\d.]+)" yMin="([\d.]+)" xMax="([\d.]+)" yMax="([\d.]+)">([^<]*)<)re");
        int found = 0;
        for (auto it = std::sregex_iterator(html.begin(), html.end(), word); it != std::sregex_iterator();
             ++it) {
            const auto mm = [&it](int index) { return std::stod((*it)[index]) * 25.4 / 72; };
            found += (*it)[5] == text && mm(1) >= box.left && mm(3) <= box.right && mm(2) >= box.top &&
                     mm(4) <= box.bottom;
        }
        return found;
    }

    std::string decoded() const {
        ZXing::DecodeHints hints;
        hints.setFormats(ZXing::BarcodeFormat::QRCode);
        const auto result = ZXing::ReadBarcode({grey.data(), width, height, ZXing::ImageFormat::Lum}, hints);
        return result.isValid() ? std::string(result.bytes().begin(), result.bytes().end()) : std::string();
    }

    int width = 0, height = 0;
    std::vector<unsigned char> grey;
    std::string html, fonts;
};

TEST_F(SlipTest, TheRenderedCodeReadsBackAt46MillimetresAndTheValuesStandInTheirBoxes) {
    if (office::findWorkerProgram().empty() ||
        std::system("command -v pdftoppm pdftotext pdffonts >/dev/null")) {
        GTEST_SKIP() << "the LibreOffice worker or poppler-utils missing";
    }
    std::string form;
    const auto invoice = [&](Row row) {
        open(form); // afresh for every invoice, as the merge run does
        fill(row);
        const std::string pdf = folder.path() + "/Rechnung-" + std::to_string(row) + ".pdf";
        doc->ExportAsFixedFormat(pdf, word::wd::wdExportFormatPDF);
        return Page(pdf);
    };
    const auto expectCodeInPlace = [](const Page& page) {
        const auto code = page.darkArea({QrLeft - 3, QrTop - 3, QrLeft + QrSize + 3, QrTop + QrSize + 3});
        ASSERT_TRUE(code);
        EXPECT_NEAR(code->left, QrLeft, 0.5);
        EXPECT_NEAR(code->top, QrTop, 0.5);
        EXPECT_NEAR(code->right - code->left, QrSize, 0.5);
        EXPECT_NEAR(code->bottom - code->top, QrSize, 0.5);
    };
    // A letterhead whose first paragraph lies in a table cell: the slip stays at the page's foot
    // instead of following the cell to the top.
    open("Letterhead.docx");
    build();
    form = folder.path() + "/Briefkopf.docx";
    doc->SaveAs2(form);
    const Page letterhead = invoice(Normal);
    EXPECT_EQ(letterhead.decoded(), coder.QRText(Normal));
    expectCodeInPlace(letterhead);

    open("Empty.docx");
    build();
    form = folder.path() + "/Formular.docx";
    doc->SaveAs2(form);
    const Page page = invoice(Normal);
    ASSERT_FALSE(page.grey.empty());
    EXPECT_EQ(page.decoded(), coder.QRText(Normal));
    expectCodeInPlace(page);
    for (const auto& [text, box] : {std::pair{"CH44", ReceiptDetails},
                                    {"13947", ReceiptDetails},
                                    {"Kilchberg", ReceiptDetails},
                                    {"CH44", PaymentDetails},
                                    {"13947", PaymentDetails},
                                    {"24100", PaymentDetails},
                                    {"Kilchberg", PaymentDetails},
                                    {"949.75", ReceiptAmount},
                                    {"949.75", PaymentAmount}}) {
        EXPECT_EQ(page.wordsIn(text, box), 1) << text;
    }
    EXPECT_NE(page.fonts.find("LiberationSans "), std::string::npos) << "regular values: " << page.fonts;
    EXPECT_FALSE(page.darkArea(ReceiptMarkCorner) || page.darkArea(PaymentMarkCorner));

    const Page withoutAmount = invoice(NoAmount);
    EXPECT_EQ(withoutAmount.decoded(), coder.QRText(NoAmount));
    EXPECT_TRUE(withoutAmount.darkArea(ReceiptMarkCorner) && withoutAmount.darkArea(PaymentMarkCorner));
}

} // namespace
} // namespace wordbm::slip::test
