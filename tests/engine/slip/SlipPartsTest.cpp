// The slip's small parts: value writing, names, and the corner-mark pictures as committed.
#include "engine/slip/SlipCanvasName.h"
#include "engine/slip/SlipMarks.h"
#include "engine/slip/SlipValue.h"
#include "engine/slip/modESQR.h"

#include <array>
#include <gtest/gtest.h>
#include <png.h>
#include <string>
#include <vector>

namespace wordbm::slip::test {
namespace {

TEST(SlipParts, ValuesGetManualBreaksAndBlankOnesNothing) {
    EXPECT_EQ(SlipValue::Written("CH44\r\nMuster AG\r\n8000 Bern", 2), "CH44\vMuster AG\v8000 Bern\v\v");
    EXPECT_EQ(SlipValue::Written("\r\n\r\nMuster AG\r\n", 0), "Muster AG\v");
    EXPECT_EQ(SlipValue::Written("   ", 2), "");
    EXPECT_EQ(SlipValue::Written("\r\n\r\n\r\n\r\n", 1), "\v") << "an unknown debtor's address block";
    EXPECT_TRUE(SlipValue::EmptyWithoutLineEnds("\r\n\r\n\r\n\r\n"));
    EXPECT_FALSE(SlipValue::Blank(" 0.00 "));
}

TEST(SlipParts, NamesBeginWithESQRAndCanvasesCarryTheBookmarkPrefixWithoutDigits) {
    EXPECT_TRUE(modESQR::IsSlipName("ESQRBetrag"));
    EXPECT_FALSE(modESQR::IsSlipName("esqrBetrag"));
    EXPECT_FALSE(modESQR::IsSlipName("QRCode"));
    EXPECT_EQ(SlipCanvasName::Current("ET"), "kdx6_ESQRMakeET");
    EXPECT_EQ(SlipCanvasName::Previous("ZT"), "kdx5_ESQRMakeZT");
}

TEST(SlipParts, CornerMarksAreBlackThreeMillimetreCornersOfThreeQuarterPointLinesOnClearGround) {
    for (const SlipMarks::Mark& mark : SlipMarks::Table()) {
        SCOPED_TRACE(std::string(mark.file));
        png_image image{};
        image.version = PNG_IMAGE_VERSION;
        ASSERT_TRUE(png_image_begin_read_from_file(
            &image, (std::string(WORDBM_SLIP_IMAGE_DIR) + "/" + std::string(mark.file)).c_str()));
        image.format = PNG_FORMAT_GA;
        std::vector<png_byte> pixels(PNG_IMAGE_SIZE(image));
        ASSERT_TRUE(png_image_finish_read(&image, nullptr, pixels.data(), 0, nullptr));
        const int width = static_cast<int>(image.width);
        const double perMm = width / double(mark.width);
        EXPECT_NEAR(image.height / perMm, mark.height, 0.1);
        const auto inked = [&](int x, int y) {
            const std::size_t at = (static_cast<std::size_t>(y) * image.width + x) * 2;
            return pixels[at] < 64 && pixels[at + 1] > 192;
        };
        const auto run = [&](int x, int y, int dx, int dy) {
            int length = 0;
            for (; x >= 0 && y >= 0 && x < width && y < int(image.height) && inked(x, y); x += dx, y += dy) {
                ++length;
            }
            return length / perMm;
        };
        const int right = width - 1, bottom = int(image.height) - 1;
        for (const auto& [x, y, dx, dy] : {std::array{0, 0, 1, 1}, std::array{right, 0, -1, 1},
                                           std::array{0, bottom, 1, -1}, std::array{right, bottom, -1, -1}}) {
            EXPECT_NEAR(run(x, y, dx, 0), 3.0, 0.1);
            EXPECT_NEAR(run(x, y, 0, dy), 3.0, 0.1);
            EXPECT_NEAR(run(x + dx * int(1.5 * perMm), y, 0, dy), 0.75 / 72 * 25.4, 0.03);
        }
        const std::size_t middle = (static_cast<std::size_t>(bottom / 2) * image.width + width / 2) * 2;
        EXPECT_EQ(pixels[middle + 1], 0) << "clear ground";
        EXPECT_EQ(pixels[(width / 2) * 2 + 1], 0) << "open between the corners";
    }
}

} // namespace
} // namespace wordbm::slip::test
