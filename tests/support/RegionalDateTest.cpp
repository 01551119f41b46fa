#include "support/Regional.h"

#include <gtest/gtest.h>

using namespace wordbm::regional;

namespace {
double serialOf(std::string_view text) {
    const auto date = parseDate(text);
    return date ? date->serial : -1e9;
}
} // namespace

TEST(RegionalDate, SerialDaysCountFromTheOleEpoch) {
    EXPECT_EQ(dateSerial(1899, 12, 30)->serial, 0);
    EXPECT_EQ(dateSerial(1899, 12, 31)->serial, 1);
    EXPECT_EQ(dateSerial(1900, 1, 1)->serial, 2);
    EXPECT_EQ(dateSerial(1900, 3, 1)->serial, 61);
    EXPECT_EQ(dateSerial(2024, 2, 29)->serial, 45351);
    EXPECT_EQ(dateSerial(2026, 11, 21)->serial, 46347);
    EXPECT_EQ(dateSerial(1800, 1, 1)->serial, -36522);
    EXPECT_EQ(dateSerial(9999, 12, 31)->serial, 2958465);
    EXPECT_FALSE(dateSerial(2023, 2, 29));
    EXPECT_FALSE(dateSerial(1900, 2, 29));
    EXPECT_FALSE(dateSerial(2024, 13, 1));
    EXPECT_FALSE(dateSerial(2024, 4, 31));
    EXPECT_FALSE(dateSerial(10000, 1, 1));
    EXPECT_EQ(timeSerial(12, 0, 0), 0.5);
}

TEST(RegionalDate, AcceptedForms) {
    EXPECT_EQ(serialOf("21.11.2026"), 46347);
    EXPECT_EQ(serialOf(" 1.1.1900 "), 2);
    EXPECT_EQ(serialOf("2026-11-21"), 46347);
    EXPECT_EQ(serialOf("21.11.26"), 46347);
    EXPECT_EQ(serialOf("1.1.29"), dateSerial(2029, 1, 1)->serial);
    EXPECT_EQ(serialOf("1.1.30"), dateSerial(1930, 1, 1)->serial);
    EXPECT_EQ(serialOf("21.11.2026 12:00"), 46347.5);
    EXPECT_EQ(serialOf("2026-11-21T18:00:00"), 46347.75);
    EXPECT_EQ(serialOf("06:00"), 0.25);
    EXPECT_EQ(serialOf("29.12.1899 06:00"), -1.25);
    EXPECT_TRUE(isDate("29.02.2024"));
    for (const char* text :
         {"", "31.02.2024", "29.02.2023", "1.13.2024", "1.1.202", "2024-1", "21.11.2026 24:00", "12:60", "12",
          "1.1.2024x", "1.1.2024 1:2:3:4", "21/11/2026", "00.01.2024"}) {
        EXPECT_FALSE(isDate(text)) << text;
    }
}

TEST(RegionalDate, FormattingAndRoundTrip) {
    EXPECT_EQ(formatDate({46347}), "21.11.2026");
    EXPECT_EQ(formatDate({46347.5}), "21.11.2026 12:00:00");
    EXPECT_EQ(formatDate({0.75}), "18:00:00");
    EXPECT_EQ(formatDate({0}), "00:00:00");
    EXPECT_EQ(formatDate({-1.25}), "29.12.1899 06:00:00");
    EXPECT_EQ(formatDate({2.99999999}), "02.01.1900"); // rounds to the next midnight
    EXPECT_EQ(formatDate({2958465}), "31.12.9999");
    for (const char* text : {"01.01.0100", "28.02.1900", "31.12.1899 23:59:59", "29.02.2024 00:00:01"}) {
        EXPECT_EQ(formatDate(*parseDate(text)), text);
    }
}
