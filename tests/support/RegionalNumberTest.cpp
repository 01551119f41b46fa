#include "support/Errors.h"
#include "support/Regional.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

using namespace wordbm;
using namespace wordbm::regional;

TEST(RegionalNumber, PermissiveSyntaxIsNumeric) {
    for (const char* text : {"12", " 12 ", "-12", "12-", "+1.5", "1.5+", "- 3", ".5", "5.", "1'234.5",
                             "1\xE2\x80\x99"
                             "234",
                             "1e3", "1.5E-2", "2D2", "\t7\t", "007"}) {
        EXPECT_TRUE(isNumeric(text)) << text;
    }
    for (const char* text : {"", " ", ".", "abc", "1,5", "-", "+-1", "-1-", "'1", "1.2.3", "1e", "1e+", "E5",
                             "1 2", "1.5'", "0x10", "1e999"}) {
        EXPECT_FALSE(isNumeric(text)) << text;
    }
    EXPECT_FALSE(isNumeric(std::string_view("1\0", 2)));
    EXPECT_FALSE(isNumeric("\xFF\xFE\x01"));
}

TEST(RegionalNumber, ParsedValues) {
    EXPECT_EQ(parseNumber("1'234.5"), 1234.5);
    EXPECT_EQ(parseNumber(" - 0.25 "), -0.25);
    EXPECT_EQ(parseNumber("1.5E-2"), 0.015);
    EXPECT_EQ(parseNumber("0.1"), 0.1); // correctly rounded, not accumulated
    EXPECT_EQ(parseNumber("1e-400"), 0.0);
    EXPECT_FALSE(std::signbit(*parseNumber("-0")));
    EXPECT_EQ(parseNumber(std::string(100000, '9') + "e-99990"), 1e10);
}

TEST(RegionalNumber, WholeNumbersRoundHalfToEvenAndOverflow) {
    EXPECT_EQ(roundHalfEven(2.5), 2);
    EXPECT_EQ(roundHalfEven(3.5), 4);
    EXPECT_EQ(roundHalfEven(-2.5), -2);
    EXPECT_EQ(roundHalfEven(2.5000001), 3);
    EXPECT_EQ(toLong(1e9 + 0.5), 1000000000);
    EXPECT_EQ(toLong(-2147483648.4), std::numeric_limits<std::int32_t>::min());
    EXPECT_THROW(toLong(2147483647.5), OverflowError);
    EXPECT_EQ(toInteger(32766.5), 32766);
    EXPECT_THROW(toInteger(32767.5), OverflowError);
    EXPECT_THROW(toInteger(40000), OverflowError);
    EXPECT_THROW(toInteger(std::nan("")), OverflowError);
    EXPECT_EQ(toByte(254.5), 254);
    EXPECT_EQ(toByte(-0.5), 0);
    EXPECT_THROW(toByte(-0.6), OverflowError);
    EXPECT_THROW(toByte(255.5), OverflowError);
}

TEST(RegionalNumber, CurrencyIsExactToFourDecimals) {
    EXPECT_EQ(parseCurrency("1'234.5")->scaled, 12345000);
    EXPECT_EQ(parseCurrency("0.00005")->scaled, 0);
    EXPECT_EQ(parseCurrency("0.00015")->scaled, 2);
    EXPECT_EQ(parseCurrency("0.000250001")->scaled, 3);
    EXPECT_EQ(parseCurrency("-0.00025")->scaled, -2);
    EXPECT_EQ(parseCurrency("1.5E2")->scaled, 1500000);
    EXPECT_EQ(parseCurrency("1E-30")->scaled, 0);
    EXPECT_EQ(parseCurrency("922337203685477.5807")->scaled, std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(parseCurrency("-922337203685477.5808")->scaled, std::numeric_limits<std::int64_t>::min());
    EXPECT_THROW(parseCurrency("922337203685477.5808"), OverflowError);
    EXPECT_THROW(parseCurrency("922337203685477.58075"), OverflowError);
    EXPECT_THROW(parseCurrency("1E999999999999"), OverflowError);
    EXPECT_FALSE(parseCurrency("abc"));
    EXPECT_EQ(toCurrency(12.34).scaled, 123400);
    EXPECT_EQ(toCurrency(-1.23456).scaled, -12346);
    EXPECT_THROW(toCurrency(1e15), OverflowError);
}

TEST(RegionalNumber, Formatting) {
    EXPECT_EQ(formatNumber(1.5), "1.5");
    EXPECT_EQ(formatNumber(-0.25), "-0.25");
    EXPECT_EQ(formatNumber(-0.0), "0");
    EXPECT_EQ(formatNumber(1e20), "1E+20");
    EXPECT_EQ(formatNumber(0.1 + 0.2), "0.30000000000000004");
    EXPECT_EQ(formatNumber(123456789012345.0), "123456789012345");
    for (double value : {0.1, 1.0 / 3, 2e-300, 12345.678, 9007199254740993.0}) {
        EXPECT_EQ(parseNumber(formatNumber(value)), value) << formatNumber(value);
    }
    EXPECT_EQ(formatSingle(0.1f), "0.1");
    EXPECT_EQ(formatCurrency(Currency{125000}), "12.5");
    EXPECT_EQ(formatCurrency(Currency::fromUnits(3)), "3");
    EXPECT_EQ(formatCurrency(Currency{-5}), "-0.0005");
    EXPECT_EQ(formatCurrency(Currency{std::numeric_limits<std::int64_t>::min()}), "-922337203685477.5808");
}

TEST(RegionalNumber, Booleans) {
    EXPECT_EQ(parseBoolean(" TRUE "), true);
    EXPECT_EQ(parseBoolean("Falsch"), false);
    EXPECT_EQ(parseBoolean("0"), false);
    EXPECT_EQ(parseBoolean("-1"), true);
    EXPECT_EQ(parseBoolean("0.0001"), true);
    EXPECT_EQ(parseBoolean("ja"), std::nullopt);
    EXPECT_EQ(parseBoolean(""), std::nullopt);
}
