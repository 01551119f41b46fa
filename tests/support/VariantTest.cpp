#include "support/Variant.h"

#include <gtest/gtest.h>

using namespace wordbm;

TEST(Variant, KindsAndNumbers) {
    EXPECT_EQ(static_cast<int>(Variant().type()), 0);
    EXPECT_EQ(static_cast<int>(Variant::null().type()), 1);
    EXPECT_EQ(static_cast<int>(Variant(std::uint8_t{1}).type()), 17);
    EXPECT_TRUE(Variant(std::uint8_t{1}).isNumber());
    EXPECT_TRUE(Variant(Currency{}).isNumber());
    EXPECT_FALSE(Variant(true).isNumber());
    EXPECT_FALSE(Variant("1").isNumber());
    EXPECT_FALSE(Variant(Date{}).isNumber());
}

TEST(Variant, TextAsConcatenationGivesIt) {
    EXPECT_EQ(Variant::null().toText(), "");
    EXPECT_EQ(Variant(std::int16_t{-7}).toText(), "-7");
    EXPECT_EQ(Variant(std::uint8_t{200}).toText(), "200");
    EXPECT_EQ(Variant(0.1f).toText(), "0.1");
    EXPECT_EQ(Variant(2.5).toText(), "2.5");
    EXPECT_EQ(Variant(Currency{123400}).toText(), "12.34");
    EXPECT_EQ(Variant(Date{46347.5}).toText(), "21.11.2026 12:00:00");
    EXPECT_EQ(Variant(false).toText(), "False");
    EXPECT_EQ(Variant(Decimal{12.25L}).toText(), "12.25");
}
