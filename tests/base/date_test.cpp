#include "base/date.h"

#include <ctime>
#include <gtest/gtest.h>
#include <limits>
#include <random>

namespace bridge {
namespace {

int64_t seconds(std::string_view text) {
    const auto date = parseDate(text);
    EXPECT_TRUE(date) << text;
    return date ? date->secondsSince1970 : INT64_MIN;
}

TEST(DateReading, CountsFromTheEpoch) {
    EXPECT_EQ(seconds("1970-01-01T00:00:00Z"), 0);
    EXPECT_EQ(seconds("1969-12-31T23:59:59Z"), -1);
    EXPECT_EQ(seconds("2026-08-14T11:28:41Z"), 1786706921);
    EXPECT_EQ(seconds("2000-02-29T12:00:00Z"), 951825600);
    EXPECT_EQ(seconds("2038-01-19T03:14:08Z"), 2147483648);
}

TEST(DateReading, GoesBackToUTCOverMidnightsAndYearEnds) {
    EXPECT_EQ(seconds("2026-08-14T13:28:41+02:00"), seconds("2026-08-14T11:28:41Z"));
    EXPECT_EQ(seconds("2026-08-14T11:28:41+00:00"), seconds("2026-08-14T11:28:41Z"));
    EXPECT_EQ(seconds("2026-08-14T11:28:41-00:00"), seconds("2026-08-14T11:28:41Z"));
    EXPECT_EQ(seconds("2026-01-01T00:30:00+01:00"), seconds("2025-12-31T23:30:00Z"));
    EXPECT_EQ(seconds("2025-12-31T23:30:00-01:00"), seconds("2026-01-01T00:30:00Z"));
    EXPECT_EQ(seconds("2024-03-01T00:15:00+00:30"), seconds("2024-02-29T23:45:00Z"));
    EXPECT_EQ(seconds("2026-08-14T05:45:00+05:45"), seconds("2026-08-14T00:00:00Z"));
    EXPECT_EQ(seconds("2026-08-14T23:59:00+23:59"), seconds("2026-08-14T00:00:00Z"));
    EXPECT_EQ(seconds("2026-08-14T00:00:00-23:59"), seconds("2026-08-14T23:59:00Z"));
}

TEST(DateReading, KnowsWhichDaysThereAre) {
    for (const char* day : {"2024-02-29", "2000-02-29", "2026-01-31", "2026-04-30", "2026-12-31", "0004-02-29"})
        EXPECT_TRUE(parseDate(std::string(day) + "T00:00:00Z")) << day;
    for (const char* day : {"2023-02-29", "1900-02-29", "2100-02-29", "2026-02-30", "2026-04-31", "2026-01-32",
                            "2026-00-10", "2026-13-10", "2026-01-00", "2026-06-31", "2026-09-31", "2026-11-31"})
        EXPECT_FALSE(parseDate(std::string(day) + "T00:00:00Z")) << day;
}

TEST(DateReading, TakesTheYears1To9999AndNoOthers) {
    EXPECT_EQ(seconds("0001-01-01T00:00:00Z"), -62135596800);
    EXPECT_EQ(seconds("9999-12-31T23:59:59Z"), 253402300799);
    EXPECT_EQ(seconds("0001-01-01T01:00:00+01:00"), -62135596800);
    EXPECT_EQ(seconds("9999-12-31T22:59:59-01:00"), 253402300799);
    EXPECT_FALSE(parseDate("0000-12-31T23:59:59Z"));
    EXPECT_FALSE(parseDate("0001-01-01T00:59:59+01:00"));
    EXPECT_FALSE(parseDate("9999-12-31T23:00:00-01:00"));
    EXPECT_FALSE(parseDate("10000-01-01T00:00:00Z"));
    EXPECT_FALSE(parseDate("+2026-01-01T00:00:00Z"));
    EXPECT_FALSE(parseDate("-001-01-01T00:00:00Z"));
}

TEST(DateReading, RefusesEveryOtherForm) {
    for (const char* text : {"",
                             "2026",
                             "2026-08-14",
                             "2026-08-14T",
                             "2026-08-14T11:28",
                             "2026-08-14T11:28Z",
                             "2026-08-14T11:28:41",
                             "2026-08-14T11:28:41.Z",
                             "2026-08-14T11:28:41.5Z",
                             "2026-08-14T11:28:41.000Z",
                             "2026-08-14T11:28:41,5Z",
                             "2026-08-14t11:28:41Z",
                             "2026-08-14T11:28:41z",
                             "2026-08-14 11:28:41Z",
                             "2026-08-14T11:28:41 Z",
                             " 2026-08-14T11:28:41Z",
                             "2026-08-14T11:28:41Z ",
                             "2026-08-14T11:28:41Z\n",
                             "2026-08-14T11:28:41ZZ",
                             "2026-08-14T11:28:41Z+00:00",
                             "2026-08-14T11:28:41+",
                             "2026-08-14T11:28:41+02",
                             "2026-08-14T11:28:41+0200",
                             "2026-08-14T11:28:41+2:00",
                             "2026-08-14T11:28:41+02:0",
                             "2026-08-14T11:28:41+02:60",
                             "2026-08-14T11:28:41+24:00",
                             "2026-08-14T11:28:41+02:00Z",
                             "2026-08-14T11:28:41\xE2\x88\x92"
                             "02:00",
                             "2026-08-14T24:00:00Z",
                             "2026-08-14T25:00:00Z",
                             "2026-08-14T11:60:00Z",
                             "2026-08-14T11:28:60Z",
                             "2026-08-14T23:59:60Z",
                             "2026-8-14T11:28:41Z",
                             "26-08-14T11:28:41Z",
                             "2026/08/14T11:28:41Z",
                             "20260814T112841Z",
                             "2026-W33-5T11:28:41Z",
                             "2026-226T11:28:41Z",
                             "2026-08-14T11.28.41Z",
                             "2026-08-14T1a:28:41Z",
                             "2026-08-14T-1:28:41Z",
                             "2026-08-14T+1:28:41Z",
                             "yesterday",
                             "1786706921"})
        EXPECT_FALSE(parseDate(text)) << text;
    EXPECT_FALSE(parseDate(std::string_view()));
    EXPECT_FALSE(parseDate(std::string_view("2026-08-14T11:28:41Z\0", 21)));
    // Arabic-Indic digits are digits, but not these.
    EXPECT_FALSE(parseDate("٢٠٢٦-08-14T11:28:41Z"));
}

TEST(DateWriting, IsUTCWithoutFractions) {
    EXPECT_EQ(formatDate({0}), "1970-01-01T00:00:00Z");
    EXPECT_EQ(formatDate({-1}), "1969-12-31T23:59:59Z");
    EXPECT_EQ(formatDate({1786706921}), "2026-08-14T11:28:41Z");
    EXPECT_EQ(formatDate({-62135596800}), "0001-01-01T00:00:00Z");
    EXPECT_EQ(formatDate({253402300799}), "9999-12-31T23:59:59Z");
}

TEST(DateWriting, WhatFourDigitsCannotSayBecomesTheNearestTheyCan) {
    EXPECT_EQ(formatDate({253402300800}), "9999-12-31T23:59:59Z");
    EXPECT_EQ(formatDate({-62135596801}), "0001-01-01T00:00:00Z");
    EXPECT_EQ(formatDate({std::numeric_limits<int64_t>::max()}), "9999-12-31T23:59:59Z");
    EXPECT_EQ(formatDate({std::numeric_limits<int64_t>::min()}), "0001-01-01T00:00:00Z");
}

TEST(Dates, AgreeWithTheCLibrary) {
    std::mt19937_64 random(20260814);
    std::uniform_int_distribution<int64_t> anySecond(-62135596800, 253402300799);
    for (int round = 0; round < 20'000; ++round) {
        const std::time_t moment = anySecond(random);
        std::tm parts{};
        ASSERT_TRUE(gmtime_r(&moment, &parts));
        char text[64];
        std::snprintf(text, sizeof text, "%04d-%02d-%02dT%02d:%02d:%02dZ", parts.tm_year + 1900, parts.tm_mon + 1,
                      parts.tm_mday, parts.tm_hour, parts.tm_min, parts.tm_sec);
        ASSERT_EQ(formatDate({moment}), text);
        ASSERT_EQ(seconds(text), timegm(&parts));
        ASSERT_EQ(seconds(text), moment);
    }
}

TEST(Dates, OrderAsMomentsDo) {
    EXPECT_LT(*parseDate("2026-08-14T11:28:41+02:00"), *parseDate("2026-08-14T11:28:41Z"));
    EXPECT_EQ(*parseDate("2026-08-14T13:28:41+02:00"), *parseDate("2026-08-14T11:28:41Z"));
}

} // namespace
} // namespace bridge
