#include "base/time_zone.h"

#include "base/date_components.h"
#include "tests/support/time_zone.h"

#include <gtest/gtest.h>

namespace bridge {

namespace {

int64_t at(std::string_view text) {
    return parseDate(text).value().secondsSince1970;
}

constexpr int hour = 3600;

} // namespace

TEST(TimeZone, OfANameHasTheOffsetsOfThatPlace) {
    const auto berlin = TimeZone::named("Europe/Berlin");
    ASSERT_TRUE(berlin);
    EXPECT_EQ(berlin->offsetAt(at("2026-01-15T12:00:00Z")), hour);
    EXPECT_EQ(berlin->offsetAt(at("2026-07-15T12:00:00Z")), 2 * hour);
    EXPECT_EQ(berlin->offsetAt(at("1880-01-15T12:00:00Z")), 53 * 60 + 28); // its own mean time
}

TEST(TimeZone, ChangesItsClocksInYearsFarAway) {
    const auto newYork = TimeZone::named("America/New_York");
    ASSERT_TRUE(newYork);
    EXPECT_EQ(newYork->offsetAt(at("2060-01-15T12:00:00Z")), -5 * hour);
    EXPECT_EQ(newYork->offsetAt(at("2060-07-15T12:00:00Z")), -4 * hour);
    EXPECT_EQ(newYork->offsetAt(at("9999-07-15T12:00:00Z")), -4 * hour);
    EXPECT_EQ(newYork->offsetAt(at("0001-07-15T12:00:00Z")), -(4 * hour + 56 * 60 + 2));
}

TEST(TimeZone, ThatNobodyKnowsIsNone) {
    for (const char* name : {"", "Nowhere/At_All", "/etc/passwd", "../../etc/passwd", "Europe/Berlin\n", "Europe"})
        EXPECT_FALSE(TimeZone::named(name)) << name;
    EXPECT_FALSE(TimeZone::named(std::string_view("UTC\0x", 5)));
    EXPECT_FALSE(TimeZone::named(std::string(100'000, 'A')));
}

TEST(TimeZone, TakesATimeThatComesTwiceAsTheFirst) {
    const auto berlin = TimeZone::named("Europe/Berlin");
    EXPECT_EQ(berlin->momentOf(at("2026-10-25T02:30:00Z")), at("2026-10-25T00:30:00Z"));
}

TEST(TimeZone, TakesATimeThatIsSkippedAsIfTheClocksHadNotChangedYet) {
    const auto berlin = TimeZone::named("Europe/Berlin");
    EXPECT_EQ(berlin->momentOf(at("2026-03-29T02:30:00Z")), at("2026-03-29T01:30:00Z"));
}

TEST(TimeZone, OfTheUserFollowsTheUser) {
    const UserTimeZone tokyo("Asia/Tokyo");
    EXPECT_EQ(TimeZone::user()->offsetAt(0), 9 * hour);
    const UserTimeZone nowhere("Nowhere/At_All");
    EXPECT_EQ(TimeZone::user()->offsetAt(0), 0);
}

TEST(TimeZone, OfACalendarsOwnChangesWhereItSays) {
    const int64_t spring = at("2026-03-29T01:00:00Z");
    const int64_t autumn = at("2026-10-25T01:00:00Z");
    const TimeZone zone(hour, {{autumn, hour}, {spring, 2 * hour}});
    EXPECT_EQ(zone.offsetAt(spring - 1), hour);
    EXPECT_EQ(zone.offsetAt(spring), 2 * hour);
    EXPECT_EQ(zone.offsetAt(autumn), hour);
    EXPECT_EQ(zone.momentOf(at("2026-10-25T02:30:00Z")), at("2026-10-25T00:30:00Z"));
    EXPECT_EQ(zone.momentOf(at("2026-03-29T02:30:00Z")), at("2026-03-29T01:30:00Z"));
    EXPECT_EQ(zone.momentOf(at("2026-07-01T12:00:00Z")), at("2026-07-01T10:00:00Z"));
}

// A calendar that writes out what the system knows by name agrees with it, hour by hour over a year.
TEST(TimeZone, OfACalendarsOwnAgreesWithTheNamedOne) {
    const auto named = TimeZone::named("Europe/Berlin");
    const TimeZone own(hour, {{at("2026-03-29T01:00:00Z"), 2 * hour}, {at("2026-10-25T01:00:00Z"), hour}});
    for (int64_t moment = at("2026-01-01T00:00:00Z"); moment < at("2027-01-01T00:00:00Z"); moment += hour / 2) {
        ASSERT_EQ(own.offsetAt(moment), named->offsetAt(moment)) << formatDate({moment});
        ASSERT_EQ(own.momentOf(moment), named->momentOf(moment)) << formatDate({moment});
    }
}

} // namespace bridge
