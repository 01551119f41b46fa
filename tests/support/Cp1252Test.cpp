#include "support/Cp1252.h"

#include <gtest/gtest.h>

using namespace wordbm;

TEST(Cp1252, WindowsBytesBecomeTheirCharacters) {
    EXPECT_EQ(cp1252ToUtf8("\x80"), "€");
    EXPECT_EQ(cp1252ToUtf8("\x84\x93\x82\x91\x85"), "„“‚‘…");
    EXPECT_EQ(cp1252ToUtf8("Z\xFCrich \xE4\xF6"), "Zürich äö");
    EXPECT_EQ(cp1252ToUtf8("\x81\x8D\x8F\x90\x9D"), "\u0081\u008D\u008F\u0090\u009D");
    // A byte-order mark is just three ANSI characters.
    EXPECT_EQ(cp1252ToUtf8("\xEF\xBB\xBF"), "ï»¿");
    EXPECT_EQ(cp1252ToUtf8(std::string_view("a\0b", 3)), std::string("a\0b", 3));
}

TEST(Cp1252, EveryByteRoundTrips) {
    std::string all;
    for (int b = 0; b < 256; ++b) {
        all += static_cast<char>(b);
    }
    EXPECT_EQ(utf8ToCp1252(cp1252ToUtf8(all)), all);
}

TEST(Cp1252, UnmappableAndBrokenTextBecomesQuestionMarks) {
    EXPECT_EQ(utf8ToCp1252("€ 5 – ok"), "\x80 5 \x96 ok");
    EXPECT_EQ(utf8ToCp1252("日本"), "??");
    EXPECT_EQ(utf8ToCp1252("😀x"), "?x");
    EXPECT_EQ(utf8ToCp1252("a\xC3"), "a?");         // truncated sequence
    EXPECT_EQ(utf8ToCp1252("\xC0\xAF"), "??");      // overlong "/"
    EXPECT_EQ(utf8ToCp1252("\xED\xA0\x80"), "???"); // surrogate
    EXPECT_EQ(utf8ToCp1252("\xE2\x82\xAC\xFF"), "\x80?");
    EXPECT_EQ(utf8ToCp1252("\u0080"), "?"); // C1 control that Windows maps to €'s byte is not €
}
