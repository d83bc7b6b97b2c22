#include "base/time_zone.h"

#include "base/time_zone_file.h"
#include "base/time_zone_rule.h"
#include "tests/support/time_zone.h"

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <iterator>
#include <thread>

namespace bridge {

namespace {

int64_t at(std::string_view text) {
    return parseDate(text).value().secondsSince1970;
}

double hours(std::string_view zone, std::string_view moment) {
    return TimeZone::named(zone)->offsetAt(at(moment)) / 3600.0;
}

std::string momentOf(std::string_view zone, std::string_view local) {
    return formatDate(Date{TimeZone::named(zone)->momentOf(at(local))});
}

} // namespace

TEST(TimeZone, KnowsWinterAndSummer) {
    EXPECT_EQ(hours("Europe/Berlin", "2026-01-15T12:00:00Z"), 1);
    EXPECT_EQ(hours("Europe/Berlin", "2026-03-29T00:59:59Z"), 1);
    EXPECT_EQ(hours("Europe/Berlin", "2026-03-29T01:00:00Z"), 2);
    EXPECT_EQ(hours("Europe/Berlin", "2026-10-25T00:59:59Z"), 2);
    EXPECT_EQ(hours("Europe/Berlin", "2026-10-25T01:00:00Z"), 1);
    EXPECT_EQ(hours("Australia/Sydney", "2026-01-15T12:00:00Z"), 11);
}

TEST(TimeZone, KnowsTheYearsThatItsFileEndsBefore) {
    for (const char* year : {"2060", "2582", "2999", "9999"}) {
        EXPECT_EQ(hours("Europe/Berlin", std::string(year) + "-01-15T12:00:00Z"), 1) << year;
        EXPECT_EQ(hours("Europe/Berlin", std::string(year) + "-07-15T12:00:00Z"), 2) << year;
        EXPECT_EQ(hours("Asia/Tokyo", std::string(year) + "-07-15T12:00:00Z"), 9) << year;
    }
    EXPECT_EQ(hours("Europe/Berlin", "2060-03-28T00:59:59Z"), 1);
    EXPECT_EQ(hours("Europe/Berlin", "2060-03-28T01:00:00Z"), 2);
    EXPECT_EQ(hours("Australia/Lord_Howe", "2060-07-15T12:00:00Z"), 10.5);
    EXPECT_EQ(hours("America/St_Johns", "2060-07-15T12:00:00Z"), -2.5);
}

TEST(TimeZone, KnowsTheYearsBeforeZonesWereMade) {
    EXPECT_EQ(TimeZone::named("Europe/Berlin")->offsetAt(at("0001-01-01T00:00:00Z")), 3208);
    EXPECT_EQ(TimeZone::named("Europe/Berlin")->offsetAt(at("1890-01-01T00:00:00Z")), 3208);
}

// Clocks that are put back in winter, by more than an hour, by less, and for Ramadan alone.
TEST(TimeZone, KnowsUncommonChanges) {
    EXPECT_EQ(hours("Europe/Dublin", "2026-01-15T12:00:00Z"), 0);
    EXPECT_EQ(hours("Europe/Dublin", "2026-07-15T12:00:00Z"), 1);
    EXPECT_EQ(hours("Antarctica/Troll", "2026-07-15T12:00:00Z"), 2);
    EXPECT_EQ(hours("Australia/Lord_Howe", "2026-01-15T12:00:00Z"), 11);
    EXPECT_EQ(hours("Africa/Casablanca", "2026-02-25T12:00:00Z"), 0);
    EXPECT_EQ(hours("Africa/Casablanca", "2026-07-15T12:00:00Z"), 1);
}

TEST(TimeZone, TakesTheFirstOfTwoEqualLocalTimes) {
    EXPECT_EQ(momentOf("Europe/Berlin", "2026-10-25T02:30:00Z"), "2026-10-25T00:30:00Z");
    EXPECT_EQ(momentOf("Europe/Berlin", "2060-10-31T02:30:00Z"), "2060-10-31T00:30:00Z");
    EXPECT_EQ(momentOf("Europe/Dublin", "2026-10-25T01:30:00Z"), "2026-10-25T00:30:00Z");
}

TEST(TimeZone, TakesASkippedLocalTimeAsIfTheClocksHadNotChangedYet) {
    EXPECT_EQ(momentOf("Europe/Berlin", "2026-03-29T02:30:00Z"), "2026-03-29T01:30:00Z");
    // Samoa went without a whole day.
    EXPECT_EQ(momentOf("Pacific/Apia", "2011-12-30T12:00:00Z"), "2011-12-30T22:00:00Z");
}

TEST(TimeZone, ComesBackFromLocalTime) {
    for (const char* name :
         {"Europe/Berlin", "America/New_York", "Africa/Casablanca", "Pacific/Apia", "Asia/Kathmandu"}) {
        const auto zone = TimeZone::named(name);
        for (int64_t moment = at("1850-01-01T00:00:00Z"); moment < at("2600-01-01T00:00:00Z"); moment += 1'234'567) {
            const int64_t local = zone->localAt(moment);
            const int64_t back = zone->momentOf(local);
            // Of two that look alike it is the first.
            EXPECT_TRUE(back == moment || (back < moment && zone->localAt(back) == local)) << name << " " << moment;
        }
    }
}

TEST(TimeZone, OfAnUnknownNameIsNone) {
    for (const char* name : {"", "Nowhere/At_All", "../../../etc/passwd", "/etc/localtime", "Europe/", "Europe",
                             "right/Europe/Berlin", "zone.tab", "leapseconds", "Europe/Berlin\n", "europe\xff"})
        EXPECT_FALSE(TimeZone::named(name)) << name;
    EXPECT_FALSE(TimeZone::named(std::string(10'000, 'A')));
}

TEST(TimeZone, OfTheUserFollowsTheUser) {
    const UserTimeZone tokyo("Asia/Tokyo");
    EXPECT_EQ(TimeZone::user()->offsetAt(0), 9 * 3600);
}

TEST(TimeZone, CanBeAskedForByManyThreads) {
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([] {
            for (const char* name : {"Europe/Madrid", "Asia/Seoul", "America/Lima", "Africa/Cairo"})
                EXPECT_TRUE(TimeZone::named(name));
        });
    for (auto& thread : threads)
        thread.join();
}

TEST(TimeZoneFile, ThatIsCutOffAnywhereIsNoneOrHarmless) {
    const std::string path = "/usr/share/zoneinfo/Europe/Berlin";
    if (!std::filesystem::exists(path)) GTEST_SKIP() << "the system has no time zones";
    std::ifstream file(path, std::ios::binary);
    std::string content{std::istreambuf_iterator<char>(file), {}};
    EXPECT_TRUE(parseTimeZoneFile(content));
    for (size_t length = 0; length < content.size(); ++length)
        parseTimeZoneFile(content.substr(0, length));
    for (size_t i = 0; i < content.size(); ++i) {
        auto changed = content;
        changed[i] = static_cast<char>(~changed[i]);
        parseTimeZoneFile(changed);
    }
    EXPECT_FALSE(parseTimeZoneFile(""));
    EXPECT_FALSE(parseTimeZoneFile("TZif"));
}

TEST(TimeZoneRule, CountsDaysInThreeWays) {
    const auto moments = [](std::string_view text, int year) {
        std::vector<std::string> all;
        for (const auto& transition : TimeZoneRule::parse(text)->transitions(year))
            all.push_back(formatDate(Date{transition.moment}));
        return all;
    };
    using testing::ElementsAre;
    EXPECT_THAT(moments("CET-1CEST,M3.5.0,M10.5.0/3", 2026),
                ElementsAre("2026-03-29T01:00:00Z", "2026-10-25T01:00:00Z"));
    // Without and with the leap day.
    EXPECT_THAT(moments("XXX0YYY,J60/0,J365", 2028), ElementsAre("2028-03-01T00:00:00Z", "2028-12-31T01:00:00Z"));
    EXPECT_THAT(moments("XXX0YYY,59/0,365", 2028), ElementsAre("2028-02-29T00:00:00Z", "2028-12-31T01:00:00Z"));
    // Hours before and after the day.
    EXPECT_THAT(moments("<-02>2<-01>,M3.5.0/-1,M10.5.0/0", 2026),
                ElementsAre("2026-03-29T01:00:00Z", "2026-10-25T01:00:00Z"));
    EXPECT_THAT(moments("EET-2EEST,M4.5.5/0,M10.5.4/24", 2026),
                ElementsAre("2026-04-23T22:00:00Z", "2026-10-29T21:00:00Z"));
}

TEST(TimeZoneRule, OfNonsenseIsNone) {
    for (const char* text : {"", "CET", "-1", "CET-1CEST", "CET-1CEST,M3.5.0", "CET-1CEST,M13.5.0,M10.5.0",
                             "CET-1CEST,M3.6.0,M10.5.0", "CET-1CEST,M3.5.7,M10.5.0", "CET-1CEST,M3.5.0,M10.5.0,",
                             "CET-1CEST,M3.5.0/999,M10.5.0", "<CET-1", "CET-99999999999"})
        EXPECT_FALSE(TimeZoneRule::parse(text)) << text;
}

} // namespace bridge
