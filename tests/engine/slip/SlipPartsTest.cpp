// The slip's small parts: unit conversion, value writing, names, and the corner-mark pictures.
#include "engine/SlipCanvasName.h"
#include "engine/SlipLayout.h"
#include "engine/SlipMarks.h"
#include "engine/SlipValue.h"
#include "engine/modESQR.h"

#include <cstdint>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <png.h>
#include <string>
#include <tuple>
#include <vector>

namespace wordbm::slip::test {
namespace {

TEST(SlipUnits, MillimetresBecomePointsInSinglePrecision) {
    EXPECT_FLOAT_EQ(SlipLayout::points(0), 0.0F);
    EXPECT_NEAR(SlipLayout::points(191), 541.41732, 1e-3);
    EXPECT_NEAR(SlipLayout::points(25.4F), 72.0, 1e-4);
    // The boxes' shift is subtracted before the conversion.
    EXPECT_NEAR(SlipLayout::points(17 - SlipLayout::BoxShiftMm), 45.354, 1e-3);
}

TEST(SlipValueWriting, LineEndsBecomeManualBreaksAndTheAskedBreaksFollow) {
    EXPECT_EQ(SlipValue::Written("CH44\r\nMuster AG\r\n8000 Bern", 2), "CH44\vMuster AG\v8000 Bern\v\v");
    EXPECT_EQ(SlipValue::Written("\r\n\r\nMuster AG\r\n\r\n", 1), "Muster AG\v");
    EXPECT_EQ(SlipValue::Written("CHF", 0), "CHF\v") << "at least one break";
}

TEST(SlipValueWriting, ABlankValueIsWrittenAsNothingButAnAddressOfLineEndsKeepsOneBreak) {
    EXPECT_EQ(SlipValue::Written("", 2), "");
    EXPECT_EQ(SlipValue::Written("   ", 2), "");
    EXPECT_EQ(SlipValue::Written("\r\n\r\n\r\n\r\n", 1), "\v");
    EXPECT_TRUE(SlipValue::EmptyWithoutLineEnds("\r\n\r\n\r\n\r\n"));
    EXPECT_FALSE(SlipValue::EmptyWithoutLineEnds("\r\nX\r\n"));
    EXPECT_TRUE(SlipValue::Blank("  "));
    EXPECT_FALSE(SlipValue::Blank(" 0.00 "));
}

TEST(SlipNames, SlipPlaceholdersBeginWithESQRInCapitals) {
    EXPECT_TRUE(modESQR::IsSlipName("ESQRBetrag"));
    EXPECT_TRUE(modESQR::IsSlipName("ESQR"));
    EXPECT_FALSE(modESQR::IsSlipName("ESQ"));
    EXPECT_FALSE(modESQR::IsSlipName("esqrBetrag"));
    EXPECT_FALSE(modESQR::IsSlipName("QRCode"));
}

TEST(SlipNames, CanvasesCarryTheBookmarkPrefixWithoutDigits) {
    EXPECT_EQ(SlipCanvasName::Current("ET"), "kdx6_ESQRMakeET");
    EXPECT_EQ(SlipCanvasName::Current("ST"), "kdx6_ESQRMakeST");
    EXPECT_EQ(SlipCanvasName::Previous("ZT"), "kdx5_ESQRMakeZT");
}

// --- The corner-mark pictures as committed ---

struct Picture {
    int width = 0;
    int height = 0;
    double dotsPerMm = 0.0;
    std::vector<std::uint8_t> greyAlpha;
    // Black and opaque.
    bool inked(int x, int y) const {
        const std::size_t at = (static_cast<std::size_t>(y) * width + x) * 2;
        return greyAlpha[at] < 64 && greyAlpha[at + 1] > 192;
    }
    bool clear(int x, int y) const {
        return greyAlpha[(static_cast<std::size_t>(y) * width + x) * 2 + 1] == 0;
    }
};

std::uint32_t bigEndian(const std::string& bytes, std::size_t at) {
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < 4; ++i) {
        value = value << 8 | static_cast<unsigned char>(bytes[at + i]);
    }
    return value;
}

Picture load(const std::string& file) {
    const std::string path = std::string(WORDBM_SLIP_IMAGE_DIR) + "/" + file;
    std::ifstream in(path, std::ios::binary);
    const std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    Picture picture;
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    if (!png_image_begin_read_from_memory(&image, bytes.data(), bytes.size())) {
        return picture;
    }
    image.format = PNG_FORMAT_GA;
    picture.greyAlpha.resize(PNG_IMAGE_SIZE(image));
    png_image_finish_read(&image, nullptr, picture.greyAlpha.data(), 0, nullptr);
    picture.width = static_cast<int>(image.width);
    picture.height = static_cast<int>(image.height);
    // The simplified reader leaves the physical size out.
    if (const auto phys = bytes.find("pHYs"); phys != std::string::npos && bytes[phys + 12] == 1) {
        picture.dotsPerMm = bigEndian(bytes, phys + 4) / 1000.0;
    }
    return picture;
}

// Pixels inked from (x, y) onwards in the direction (dx, dy).
int run(const Picture& picture, int x, int y, int dx, int dy) {
    int length = 0;
    while (x >= 0 && y >= 0 && x < picture.width && y < picture.height && picture.inked(x, y)) {
        ++length;
        x += dx;
        y += dy;
    }
    return length;
}

TEST(CornerMarks, EachPictureHasTheSizeOfItsFieldAndBlackCornersOfThreeQuarterPointLinesOnClearGround) {
    const double lineMm = 0.75 / 72.0 * 25.4;
    for (const SlipMarks::Mark& mark : SlipMarks::Table()) {
        SCOPED_TRACE(std::string(mark.file));
        const Picture picture = load(std::string(mark.file));
        ASSERT_GT(picture.width, 0) << "not a readable PNG";
        ASSERT_GT(picture.dotsPerMm, 0.0) << "no physical size";
        EXPECT_NEAR(picture.width / picture.dotsPerMm, mark.width, 0.1);
        EXPECT_NEAR(picture.height / picture.dotsPerMm, mark.height, 0.1);
        const int right = picture.width - 1;
        const int bottom = picture.height - 1;
        for (const auto& [x, y, dx, dy] : {std::tuple{0, 0, 1, 1}, std::tuple{right, 0, -1, 1},
                                           std::tuple{0, bottom, 1, -1}, std::tuple{right, bottom, -1, -1}}) {
            // Each arm is 3 mm long and 0.75 pt thick.
            EXPECT_NEAR(run(picture, x, y, dx, 0) / picture.dotsPerMm, 3.0, 0.1);
            EXPECT_NEAR(run(picture, x, y, 0, dy) / picture.dotsPerMm, 3.0, 0.1);
            const int across = x + dx * static_cast<int>(1.5 * picture.dotsPerMm);
            EXPECT_NEAR(run(picture, across, y, 0, dy) / picture.dotsPerMm, lineMm, 0.03);
        }
        EXPECT_TRUE(picture.clear(picture.width / 2, picture.height / 2));
        EXPECT_TRUE(picture.clear(picture.width / 2, 0)) << "the edges are open between the corners";
        EXPECT_TRUE(picture.clear(0, picture.height / 2));
    }
}

} // namespace
} // namespace wordbm::slip::test
