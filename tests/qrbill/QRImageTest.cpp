#include "qrbill/QRImage.h"

// zxing-cpp 1.4 gives the ECC level as UTF-8 only with this set.
#define ZX_USE_UTF8 1
#include "GrayImage.h"

#include <ZXing/ReadBarcode.h>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>

namespace wordbm {
namespace {

GrayImage encoded(const std::string& payload) {
    QRImage image;
    EXPECT_TRUE(image.Encode(payload)) << image.lastError();
    return GrayImage::fromPng(image.png());
}

void expectRoundTrip(const std::string& payload) {
    // Read as a phone sees the printed slip: the code inside its 5 mm of white.
    const GrayImage code = encoded(payload);
    const GrayImage printed = code.withMargin(code.width * 5 / QRImage::kCodeSizeMm);
    const ZXing::ImageView view(printed.pixels.data(), printed.width, printed.height,
                                ZXing::ImageFormat::Lum);
    const ZXing::Result result = ZXing::ReadBarcode(view);
    ASSERT_TRUE(result.isValid()) << result.error().msg();
    EXPECT_EQ(result.format(), ZXing::BarcodeFormat::QRCode);
    EXPECT_EQ(std::string(result.bytes().begin(), result.bytes().end()), payload);
    EXPECT_EQ(result.ecLevel(), "M");
    EXPECT_FALSE(result.hasECI());
}

// The largest QR-bill text that fits: every field filled, with umlauts, accents and the euro sign,
// the second alternative procedure padded to exactly the limit.
std::string longestPayload() {
    const std::string text =
        "SPC\n0200\n1\nCH4431999123000889012\nS\nBäckerei Müller-Lüthi & Söhne AG, Filiale "
        "Zürich-Oerlikon Nord\nHöhenstrasse beim Bahnhof Süd\n12a\n8050\nZürich\nCH\n\n\n\n\n\n"
        "\n\n199999999.95\nCHF\nS\nFrançoise Dupré-Lefèvre\nRue de l'Hôpital\n3\n1200\nGenève\n"
        "CH\nQRR\n210000000003139471430009017\nRechnung 3139 für Gärtnerarbeiten im März; "
        "Rückfragen an Frau Höhn. Preis: 12 € je Stück\nEPD\n//S1/10/10201409/11/190512/20/"
        "1400.000-53/30/106017086/31/180508/32/7.7/40/2:10;0:30\nName AV1: UV;Ärzte;XY-Gebühr;"
        "Rechnung 3139\nName AV2: ";
    return text + std::string(QRImage::kMaxPayloadBytes - text.size(), 'x');
}

TEST(QRImage, DecodesToThePayloadBytesAtLevelM) {
    // Short enough for version 1 at a higher level, which must not be taken.
    expectRoundTrip("SPC");
    expectRoundTrip("SPC\n0200\n1\nCH5800791123000889012\nS\nJürg Bäumle\nGärtnerweg\n1\n8000\nZürich\nCH\n"
                    "\n\n\n\n\n\n\n10.00\nEUR\n\n\n\n\n\n\n\nNON\n\nCafé Crème à 4 €\nEPD");
    // Empty fields: long runs of line feeds, and a trailing one.
    expectRoundTrip(
        "SPC\n0200\n1\nCH4431999123000889012\nS\nJane\n\n\n1000\nLausanne\nCH\n\n\n\n\n\n\n\n\nCHF"
        "\n\n\n\n\n\n\n\nNON\n\n\nEPD\n");
}

TEST(QRImage, DecodesEveryValidCorpusPayload) {
    const std::filesystem::path folder = std::filesystem::path(WORDBM_CORPUS_DIR) / "qrbill";
    std::ifstream manifest(folder / "MANIFEST.tsv");
    int count = 0;
    for (std::string line; std::getline(manifest, line);) {
        const std::string file = line.substr(0, line.find('\t'));
        if (file.ends_with(".txt") && line.find("\tvalid") != std::string::npos) {
            SCOPED_TRACE(file);
            std::ifstream in(folder / file, std::ios::binary);
            expectRoundTrip(std::string(std::istreambuf_iterator<char>(in), {}));
            ++count;
        }
    }
    EXPECT_GE(count, 40);
}

TEST(QRImage, LongestPayloadFitsVersion25AndOneByteMoreFails) {
    expectRoundTrip(longestPayload());
    QRImage image;
    ASSERT_TRUE(image.Encode(longestPayload()));
    EXPECT_EQ(image.version(), 25);
    EXPECT_FALSE(image.Encode(longestPayload() + "x"));
    EXPECT_NE(image.lastError().find("998 Bytes"), std::string::npos);
    EXPECT_TRUE(image.empty());
    EXPECT_EQ(image.pixelSize(), 0);
    EXPECT_FALSE(image.Encode(""));
}

TEST(QRImage, ModulesAreWholePixelsAtLeast300DpiOver46Mm) {
    for (const std::string& payload : {std::string("SPC"), longestPayload()}) {
        QRImage image;
        ASSERT_TRUE(image.Encode(payload));
        const GrayImage png = GrayImage::fromPng(image.png());
        // Measured, not asked: the finder pattern's top row is 7 black modules.
        int finder = 0;
        while (png.isBlack(finder, 0)) {
            ++finder;
        }
        EXPECT_EQ(finder % 7, 0);
        EXPECT_EQ(png.height, png.width);
        EXPECT_EQ(png.width, image.moduleCount() * finder / 7);
        EXPECT_EQ(png.width, image.pixelSize());
        // The smallest whole module size that reaches 544 pixels, i.e. 300 dpi over 46 mm.
        EXPECT_GE(png.width, 544);
        EXPECT_LT(png.width - image.moduleCount(), 544);
        const std::uint32_t perMetre = pngPixelsPerMetre(image.png());
        EXPECT_GE(perMetre * 0.0254, 300.0);
        EXPECT_NEAR(png.width * 1000.0 / perMetre, image.sizeMm(), 0.01);
        EXPECT_EQ(image.sizeMm(), 46.0);
    }
}

TEST(QRImage, CarriesTheSwissCrossInTheMiddle) {
    const GrayImage png = encoded(longestPayload());
    const auto black = [&png](double xMm, double yMm) {
        return png.isBlack(png.width / 2 + static_cast<int>(std::lround(xMm * png.width / 46.0)),
                           png.height / 2 + static_cast<int>(std::lround(yMm * png.height / 46.0)));
    };
    EXPECT_FALSE(black(0, 0));
    for (const double s : {-1.0, 1.0}) {
        EXPECT_FALSE(black(1.5 * s, 0) || black(0, 1.5 * s)) << "cross arm";
        EXPECT_TRUE(black(1.5 * s, 1.5 * s) && black(1.5 * s, -1.5 * s)) << "square between the arms";
        EXPECT_TRUE(black(0, 2.7 * s) && black(2.7 * s, 0)) << "square beyond an arm";
        EXPECT_FALSE(black(3.38 * s, 0) || black(0, 3.38 * s) || black(3.38 * s, 3.38 * s)) << "white border";
    }
}

} // namespace
} // namespace wordbm
