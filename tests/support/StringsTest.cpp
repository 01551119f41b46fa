#include "support/Strings.h"

#include <gtest/gtest.h>

using namespace wordbm;

TEST(Strings, TrimTouchesOnlySpaces) {
    EXPECT_EQ(trim("  a b  "), "a b");
    EXPECT_EQ(trim("\ta\t"), "\ta\t");
    EXPECT_EQ(trim("    "), "");
    EXPECT_EQ(trimLeft("  a  "), "a  ");
    EXPECT_EQ(trimRight("  a  "), "  a");
}

TEST(Strings, UnquoteDropsOneDelimiterAtEachEndAndUndoublesInner) {
    EXPECT_EQ(Unquote("  \"abc\"  "), "abc");
    EXPECT_EQ(Unquote("\"say \"\"hi\"\"\""), "say \"hi\"");
    EXPECT_EQ(Unquote("\"open"), "open");
    EXPECT_EQ(Unquote("close\""), "close");
    EXPECT_EQ(Unquote("\""), "");
    EXPECT_EQ(Unquote("\"\""), "");
    EXPECT_EQ(Unquote("\"\"\"\""), "\"");
    EXPECT_EQ(Unquote(" 'x''y' ", "'"), "x'y");
    EXPECT_EQ(Unquote(" \"x\" ", ""), "\"x\"");
    EXPECT_EQ(Unquote("<<a<<<<b<<", "<<"), "a<<b");
}

TEST(Strings, QuoteRoundTripsThroughUnquote) {
    EXPECT_EQ(Quote("a\"b"), "\"a\"\"b\"");
    EXPECT_EQ(Quote(""), "\"\"");
    for (const char* text : {"", "plain", "\"", "a\"\"b", "\"edge\""}) {
        EXPECT_EQ(Unquote(Quote(text)), text) << text;
    }
}

TEST(Strings, SplitJoinReplace) {
    EXPECT_EQ(split("", ";"), std::vector<std::string>{""});
    EXPECT_EQ(split("a;;b;", ";"), (std::vector<std::string>{"a", "", "b", ""}));
    EXPECT_EQ(split("a;b", ""), std::vector<std::string>{"a;b"});
    EXPECT_EQ(split("a\r\nb", "\r\n"), (std::vector<std::string>{"a", "b"}));
    EXPECT_EQ(join({"a", "", "b"}, ", "), "a, , b");
    EXPECT_EQ(join({}, ";"), "");
    EXPECT_EQ(replaceAll("aaa", "aa", "a"), "aa");
    EXPECT_EQ(replaceAll("abc", "", "x"), "abc");
    EXPECT_EQ(replaceAll("a.b.c", ".", "::"), "a::b::c");
}

TEST(Strings, CaseFoldingAndPadding) {
    EXPECT_EQ(toLowerAscii("AbC-Ä"), "abc-Ä");
    EXPECT_TRUE(equalsIgnoreCase("PublicName", "publicname"));
    EXPECT_FALSE(equalsIgnoreCase("abc", "abcd"));
    EXPECT_FALSE(equalsIgnoreCase("Ä", "ä"));
    EXPECT_EQ(zeroPad(42, 6), "000042");
    EXPECT_EQ(zeroPad(1234567, 6), "234567");
    EXPECT_EQ(zeroPad(0, 0), "");
}
