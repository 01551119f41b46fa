#include "qrbill/ImageSlot.h"

#include "qrbill/QRImage.h"

#include <gtest/gtest.h>

namespace wordbm {
namespace {

class ImageSlotTest : public testing::Test {
protected:
    void SetUp() override { ImageSlot::instance().clear(); }
    void TearDown() override { ImageSlot::instance().clear(); }
};

TEST_F(ImageSlotTest, ClipboardCopyHandsThePictureAt46MmToPaste) {
    QRImage image;
    ASSERT_TRUE(image.Encode("SPC\n0200\n1"));
    ASSERT_TRUE(image.ClipboardCopy());
    const std::optional<SlotImage> pasted = ImageSlot::instance().read();
    ASSERT_TRUE(pasted.has_value());
    EXPECT_EQ(pasted->png, image.png());
    EXPECT_EQ(pasted->widthMm, 46.0);
    EXPECT_EQ(pasted->heightMm, 46.0);
    // Pasting does not use the picture up.
    EXPECT_FALSE(ImageSlot::instance().empty());
}

TEST_F(ImageSlotTest, FailedEncodeNeverPastesThePreviousInvoicesCode) {
    QRImage image;
    ASSERT_TRUE(image.Encode("first invoice"));
    ASSERT_TRUE(image.ClipboardCopy());
    EXPECT_FALSE(image.Encode(std::string(QRImage::kMaxPayloadBytes + 1, 'x')));
    EXPECT_FALSE(image.ClipboardCopy());
    EXPECT_TRUE(ImageSlot::instance().empty());
}

} // namespace
} // namespace wordbm
