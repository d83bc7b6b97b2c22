#include "tests/adapters/sqlite/random_events.h"
#include "tests/adapters/sqlite/store_test.h"
#include "tests/support/print_items.h"

#include "adapters/sqlite/database.h"

#include <algorithm>
#include <tuple>

namespace bridge {

namespace {

constexpr int64_t day = 86400;

class EventIndexTest : public SqliteStoreTest {
protected:
    void add(const std::string& uid, const std::string& lines) {
        std::vector<CalendarObject> one;
        one.push_back(object(uid, lines));
        store->importItems(defaultCalendar().id, one);
    }
    size_t indexedOccurrences() {
        return Database(path, "calendars", {}).value<size_t>("SELECT count(*) FROM occurrence").value();
    }
    std::vector<std::string> starts(Date start, Date end, size_t limit = 1000) {
        std::vector<std::string> starts;
        for (const auto& event : events(start, end, {defaultCalendar().id}, limit))
            starts.push_back(formatDate(event.startDate));
        return starts;
    }
    static Date at(const char* text) { return parseDate(text).value(); }
};

class RandomEventIndexTest : public EventIndexTest, public testing::WithParamInterface<unsigned> {
protected:
    // What the objects themselves say.
    std::vector<CalendarEvent> expected(Date start, Date end, size_t limit) const {
        struct One {
            size_t object;
            std::string recurrenceID;
            CalendarEvent event;
        };
        std::vector<One> all;
        for (size_t index = 0; index < objects.size(); ++index)
            for (const auto& occurrence : objects[index].occurrences(start, end, limit))
                all.push_back({index, occurrence.recurrenceID, objects[index].describe(occurrence)});
        std::ranges::sort(all, {},
                          [](const One& one) { return std::tuple(one.event.startDate, one.object, one.recurrenceID); });
        std::vector<CalendarEvent> events;
        for (auto& one : all) {
            if (events.size() == limit) break;
            one.event.calendarID = calendar;
            one.event.identifier = one.recurrenceID;
            events.push_back(std::move(one.event));
        }
        return events;
    }
    // Without the part of the identifiers that only the store knows.
    std::vector<CalendarEvent> found(Date start, Date end, size_t limit) {
        auto found = events(start, end, {calendar}, limit);
        for (auto& event : found)
            event.identifier.erase(0, std::min<size_t>(37, event.identifier.size()));
        return found;
    }

    RandomEvents random{GetParam()};
    std::string calendar;
    std::vector<CalendarObject> objects;
};

TEST_P(RandomEventIndexTest, FindsWhatTheEventsThemselvesSay) {
    for (int number = 0; number < 30; ++number) {
        const auto uid = "event-" + std::to_string(number);
        std::string text = "BEGIN:VCALENDAR\r\nVERSION:2.0\r\n";
        for (const char character : random.lines(uid))
            text += character == '\n' ? "\r\n" : std::string(1, character);
        objects.push_back(CalendarObject::parse(text + "END:VCALENDAR\r\n"));
    }
    calendar = store->importCalendar({EntityType::event, account().id, "Random"}, objects).id;

    const auto now = clock.date.secondsSince1970;
    for (const auto* place : {"Europe/Lisbon", "America/New_York", "Pacific/Kiritimati", "Asia/Kathmandu"}) {
        const UserTimeZone there(place);
        for (int number = 0; number < 12; ++number) {
            // Near, where all is in the index; then far, before and behind it.
            const int64_t far = number < 6 ? 500 : 9000;
            const Date start{now + (random.below(2 * far) - far) * day + random.below(day)};
            const Date end{start.secondsSince1970 +
                           (number % 3 == 0 ? 1 + random.below(7200) : random.below(60 * day))};
            const size_t limit = number % 2 == 0 ? 100'000 : static_cast<size_t>(1 + random.below(20));
            SCOPED_TRACE(fmt::format("{} ..< {}, {} of them, in {}", formatDate(start), formatDate(end), limit, place));
            ASSERT_EQ(found(start, end, limit), expected(start, end, limit));
        }
        const Date past{now - 20'000 * day};
        const Date future{now + 20'000 * day};
        ASSERT_EQ(found(past, future, 50), expected(past, future, 50)) << place;
        ASSERT_EQ(found(Date{now}, future, 500), expected(Date{now}, future, 500)) << place;
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomEventIndexTest, testing::Range(1u, 6u));

TEST_F(EventIndexTest, AFloatingEventIsWhereTheUserIs) {
    add("wall", "DTSTART:20260814T090000\nDURATION:PT1H\n");
    const auto fromTo = [&](const char* from, const char* to) { return starts(at(from), at(to)); };
    EXPECT_THAT(fromTo("2026-08-14T08:00:00Z", "2026-08-14T08:01:00Z"), testing::ElementsAre("2026-08-14T08:00:00Z"));
    const UserTimeZone auckland("Pacific/Auckland");
    EXPECT_THAT(fromTo("2026-08-14T08:00:00Z", "2026-08-14T08:01:00Z"), testing::IsEmpty());
    EXPECT_THAT(fromTo("2026-08-13T21:59:00Z", "2026-08-13T22:00:00Z"), testing::ElementsAre("2026-08-13T21:00:00Z"));
    EXPECT_THAT(fromTo("2026-08-13T22:00:00Z", "2026-08-13T23:00:00Z"), testing::IsEmpty());
    const UserTimeZone honolulu("Pacific/Honolulu");
    EXPECT_THAT(fromTo("2026-08-14T19:00:00Z", "2026-08-14T19:00:01Z"), testing::ElementsAre("2026-08-14T19:00:00Z"));
}

TEST_F(EventIndexTest, AllDaysAndMomentsAreOrderedWhereTheUserIs) {
    add("day", "DTSTART;VALUE=DATE:20260814\n");
    add("utc", "DTSTART:20260814T020000Z\n");
    const auto first = [&] {
        return events(at("2026-08-13T00:00:00Z"), at("2026-08-16T00:00:00Z"), {defaultCalendar().id}, 1).at(0);
    };
    EXPECT_TRUE(first().isAllDay);
    const UserTimeZone newYork("America/New_York");
    EXPECT_FALSE(first().isAllDay);
}

TEST_F(EventIndexTest, AnEndlessSeriesTakesLittleRoom) {
    add("days", "DTSTART:20260101T090000Z\nRRULE:FREQ=DAILY\n");
    add("minutes", "DTSTART:20260101T090000Z\nRRULE:FREQ=MINUTELY\n");
    add("long ago", "DTSTART:16010101T090000Z\nRRULE:FREQ=DAILY\n");
    EXPECT_LT(indexedOccurrences(), 20'000u);
    EXPECT_EQ(starts(at("2126-08-14T00:00:00Z"), at("2126-08-14T01:00:00Z"), 5).size(), 5u);
    EXPECT_EQ(starts(at("1701-08-14T00:00:00Z"), at("1701-08-15T00:00:00Z")).size(), 1u);
}

TEST_F(EventIndexTest, GoesOnAsTimeGoesBy) {
    add("weeks", "DTSTART:20260101T090000Z\nRRULE:FREQ=WEEKLY\n");
    const auto before = indexedOccurrences();
    reopen();
    wait(store->sources());
    EXPECT_EQ(indexedOccurrences(), before) << "at once";
    clock.date.secondsSince1970 += 2 * 365 * day;
    EXPECT_EQ(starts(at("2030-08-01T00:00:00Z"), at("2030-09-01T00:00:00Z")).size(), 5u) << "beyond the index";
    EXPECT_EQ(indexedOccurrences(), before) << "a search writes nothing";
    reopen();
    wait(store->sources());
    EXPECT_GT(indexedOccurrences(), before + 90);
    EXPECT_EQ(starts(at("2030-08-01T00:00:00Z"), at("2030-09-01T00:00:00Z")).size(), 5u);
}

TEST_F(EventIndexTest, AnItemThatIsGoneLeavesNothingInTheIndex) {
    add("weeks", "DTSTART:20260101T090000Z\nRRULE:FREQ=WEEKLY;COUNT=3\n");
    add("single", "DTSTART:20260101T090000Z\n");
    for (const auto& event : allEvents())
        wait(store->removeEvent(event.identifier));
    EXPECT_EQ(indexedOccurrences(), 0u);
    add("again", "DTSTART:20260101T090000Z\nRRULE:FREQ=WEEKLY\n");
    wait(store->removeCalendar(defaultCalendar().id));
    EXPECT_EQ(indexedOccurrences(), 0u);
    Database database(path, "calendars", {});
    for (const auto* table : {"item", "event", "reminder"})
        EXPECT_EQ(database.value<int64_t>(std::string("SELECT count(*) FROM ") + table), 0) << table;
}

} // namespace
} // namespace bridge
