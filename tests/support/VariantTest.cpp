#include "support/Variant.h"

#include <gtest/gtest.h>

using namespace wordbm;

TEST(Variant, TypesFollowTheClassicCodes) {
    EXPECT_EQ(Variant().type(), VarType::Empty);
    EXPECT_EQ(Variant::null().type(), VarType::Null);
    EXPECT_EQ(Variant(std::int16_t{1}).type(), VarType::Integer);
    EXPECT_EQ(Variant(1).type(), VarType::Long);
    EXPECT_EQ(Variant(1.0f).type(), VarType::Single);
    EXPECT_EQ(Variant(1.0).type(), VarType::Double);
    EXPECT_EQ(Variant(Currency{}).type(), VarType::Currency);
    EXPECT_EQ(Variant(Date{}).type(), VarType::Date);
    EXPECT_EQ(Variant("x").type(), VarType::String);
    EXPECT_EQ(Variant(true).type(), VarType::Boolean);
    EXPECT_EQ(Variant(Decimal{}).type(), VarType::Decimal);
    EXPECT_EQ(Variant(std::uint8_t{1}).type(), VarType::Byte);
    EXPECT_TRUE(Variant(std::uint8_t{1}).isNumber());
    EXPECT_TRUE(Variant(Currency{}).isNumber());
    EXPECT_FALSE(Variant(true).isNumber());
    EXPECT_FALSE(Variant("1").isNumber());
    EXPECT_FALSE(Variant(Date{}).isNumber());
}

TEST(Variant, TextAsConcatenationGivesIt) {
    EXPECT_EQ(Variant().toText(), "");
    EXPECT_EQ(Variant::null().toText(), "");
    EXPECT_EQ(Variant(std::int16_t{-7}).toText(), "-7");
    EXPECT_EQ(Variant(std::uint8_t{200}).toText(), "200");
    EXPECT_EQ(Variant(0.1f).toText(), "0.1");
    EXPECT_EQ(Variant(2.5).toText(), "2.5");
    EXPECT_EQ(Variant(Currency{123400}).toText(), "12.34");
    EXPECT_EQ(Variant(Date{46347.5}).toText(), "21.11.2026 12:00:00");
    EXPECT_EQ(Variant(false).toText(), "False");
    EXPECT_EQ(Variant(Decimal{12.25L}).toText(), "12.25");
    EXPECT_EQ(Variant("Text").toText(), "Text");
}
