#include "base/date_components.h"

#include "tests/support/time_zone.h"

#include <gtest/gtest.h>

namespace bridge {

namespace {

Date at(std::string_view text) {
    return parseDate(text).value();
}

DateComponents day(int year, int month, int dayOfMonth) {
    return {.year = year, .month = month, .day = dayOfMonth};
}

DateComponents time(DateComponents components, int hour, int minute, std::optional<std::string> zone = std::nullopt) {
    components.hour = hour;
    components.minute = minute;
    components.timeZone = std::move(zone);
    return components;
}

} // namespace

TEST(DateComponents, AreThoseOfTheUsersClockToTheMinute) {
    const UserTimeZone berlin("Europe/Berlin");
    EXPECT_EQ(componentsToTheMinute(at("2026-08-14T10:30:45Z")), time(day(2026, 8, 14), 12, 30, "Europe/Berlin"));
    EXPECT_EQ(componentsToTheMinute(at("2026-12-31T23:10:00Z")), time(day(2027, 1, 1), 0, 10, "Europe/Berlin"));
}

TEST(DateComponents, ComeBackAsTheSameMinute) {
    // A zone without seconds in its offset: those of before 1900 had them.
    const UserTimeZone utc("UTC");
    for (const char* text : {"0001-01-02T00:00:00Z", "1582-10-10T00:00:00Z", "1969-12-31T23:59:00Z",
                             "2026-08-14T10:30:00Z", "9999-12-30T23:59:00Z"})
        EXPECT_EQ(dateFrom(componentsToTheMinute(at(text))), at(text)) << text;
}

TEST(DateComponents, ComeBackInAZoneOfQuarterHours) {
    const UserTimeZone kathmandu("Asia/Kathmandu");
    EXPECT_EQ(dateFrom(componentsToTheMinute(at("2026-08-14T10:30:00Z"))), at("2026-08-14T10:30:00Z"));
}

TEST(DateComponents, FollowTheUserToAnotherZone) {
    const auto floating = time(day(2026, 8, 14), 9, 0);
    {
        const UserTimeZone tokyo("Asia/Tokyo");
        EXPECT_EQ(userTimeZone(), "Asia/Tokyo");
        EXPECT_EQ(dateFrom(floating), at("2026-08-14T00:00:00Z"));
    }
    const UserTimeZone newYork("America/New_York");
    EXPECT_EQ(userTimeZone(), "America/New_York");
    EXPECT_EQ(dateFrom(floating), at("2026-08-14T13:00:00Z"));
}

TEST(DateComponents, OfAZoneOfTheirOwnStayThere) {
    const UserTimeZone tokyo("Asia/Tokyo");
    EXPECT_EQ(dateFrom(time(day(2026, 8, 14), 9, 0, "Europe/Berlin")), at("2026-08-14T07:00:00Z"));
}

TEST(DateComponents, OfADayAreItsMidnight) {
    const UserTimeZone berlin("Europe/Berlin");
    EXPECT_EQ(dateFrom(day(2026, 8, 14)), at("2026-08-13T22:00:00Z"));
}

TEST(DateComponents, ThatFormNoDateAreNone) {
    const UserTimeZone berlin("Europe/Berlin");
    EXPECT_FALSE(dateFrom(day(2026, 2, 29)));
    EXPECT_TRUE(dateFrom(day(2028, 2, 29)));
    EXPECT_FALSE(dateFrom(day(2026, 13, 1)));
    EXPECT_FALSE(dateFrom(day(2026, 0, 1)));
    EXPECT_FALSE(dateFrom(day(2026, 4, 31)));
    EXPECT_FALSE(dateFrom(time(day(2026, 8, 14), 24, 0)));
    EXPECT_FALSE(dateFrom(time(day(2026, 8, 14), 9, 60)));
    EXPECT_FALSE(dateFrom(time(day(2026, 8, 14), 9, 0, "Nowhere/At_All")));
    EXPECT_FALSE(dateFrom(day(2000000000, 1, 1)));
    EXPECT_FALSE(dateFrom(day(-5, 1, 1)));
}

// 02:30 on the night Berlin's clocks go forward does not exist: an hour after 01:30 they show 03:30.
TEST(DateComponents, OfATimeThatIsSkippedAreAsIfTheClocksHadNotChangedYet) {
    const UserTimeZone berlin("Europe/Berlin");
    EXPECT_EQ(dateFrom(time(day(2026, 3, 29), 2, 30)), at("2026-03-29T01:30:00Z"));
}

TEST(DateComponents, OfATimeThatComesTwiceAreTheFirst) {
    const UserTimeZone berlin("Europe/Berlin");
    EXPECT_EQ(dateFrom(time(day(2026, 10, 25), 2, 30)), at("2026-10-25T00:30:00Z"));
}

TEST(UserTimeZone, IsUTCWhenTheSettingMeansNothing) {
    const UserTimeZone nonsense("Nowhere/At_All");
    EXPECT_TRUE(dateFrom(time(day(2026, 8, 14), 9, 0)));
    EXPECT_TRUE(dateFrom(componentsToTheMinute(at("2026-08-14T10:30:00Z"))));
}

} // namespace bridge
