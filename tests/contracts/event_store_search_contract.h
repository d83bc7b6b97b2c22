#pragma once

#include "tests/contracts/event_store_fixture.h"

#include <limits>

// Which events a range finds, in which order and how many.

namespace bridge {

TEST_P(EventStoreContract, FindsWhatSharesSomeTimeWithTheRange) {
    const auto calendar = addCalendar();
    const auto saved = save(sowing(calendar)); // 09:00 to 10:00
    const struct {
        const char* from;
        const char* to;
        bool isFound;
    } ranges[] = {{"2026-08-14T09:00:00Z", "2026-08-14T10:00:00Z", true},
                  {"2026-08-14T00:00:00Z", "2026-08-15T00:00:00Z", true},
                  {"2026-08-14T09:30:00Z", "2026-08-14T09:30:01Z", true},
                  {"2026-08-14T08:00:00Z", "2026-08-14T09:00:01Z", true},
                  {"2026-08-14T08:00:00Z", "2026-08-14T09:00:00Z", false},
                  {"2026-08-14T09:59:59Z", "2026-08-14T11:00:00Z", true},
                  {"2026-08-14T10:00:00Z", "2026-08-14T11:00:00Z", false},
                  {"2026-08-15T00:00:00Z", "2026-08-16T00:00:00Z", false},
                  {"2025-08-14T00:00:00Z", "2025-08-15T00:00:00Z", false}};
    for (const auto& range : ranges)
        EXPECT_EQ(eventsBetween(calendar, range.from, range.to),
                  range.isFound ? std::vector{saved} : std::vector<CalendarEvent>{})
            << range.from << " to " << range.to;
}

TEST_P(EventStoreContract, FindsAnEventWithoutDurationAtItsMoment) {
    const auto calendar = addCalendar();
    putEvent(calendar, "moment", "DTSTART:20260814T090000Z\nSUMMARY:Bell");
    const auto bell = onlyEvent(calendar);
    EXPECT_EQ(bell.startDate, at("2026-08-14T09:00:00Z"));
    EXPECT_EQ(bell.endDate, bell.startDate);
    EXPECT_EQ(eventsBetween(calendar, "2026-08-14T09:00:00Z", "2026-08-14T09:00:01Z").size(), 1u);
    EXPECT_EQ(eventsBetween(calendar, "2026-08-14T08:00:00Z", "2026-08-14T09:00:01Z").size(), 1u);
    EXPECT_EQ(eventsBetween(calendar, "2026-08-14T08:00:00Z", "2026-08-14T09:00:00Z").size(), 0u);
    EXPECT_EQ(eventsBetween(calendar, "2026-08-14T09:00:01Z", "2026-08-14T10:00:00Z").size(), 0u);
}

TEST_P(EventStoreContract, FindsNothingInARangeWithoutTime) {
    const auto calendar = addCalendar();
    save(sowing(calendar));
    putEvent(calendar, "moment", "DTSTART:20260814T093000Z\nSUMMARY:Bell");
    EXPECT_TRUE(eventsBetween(calendar, "2026-08-14T09:30:00Z", "2026-08-14T09:30:00Z").empty());
    EXPECT_TRUE(eventsBetween(calendar, "2026-08-15T00:00:00Z", "2026-08-14T00:00:00Z").empty());
}

TEST_P(EventStoreContract, FindsAnEventOfManyYearsInEachOfThem) {
    const auto calendar = addCalendar();
    auto given = sowing(calendar);
    given.endDate = at("2046-08-14T00:00:00Z");
    save(given);
    EXPECT_EQ(eventsBetween(calendar, "2036-01-01T00:00:00Z", "2036-01-01T00:00:01Z").size(), 1u);
    EXPECT_EQ(eventsBetween(calendar, "2046-08-14T00:00:00Z", "2047-01-01T00:00:00Z").size(), 0u);
}

TEST_P(EventStoreContract, SearchesAllOfTime) {
    const auto calendar = addCalendar();
    const auto saved = save(sowing(calendar));
    EXPECT_EQ(wait(store().events(earliestDate, latestDate, {calendar}, 10)), std::vector{saved});
    const Date first{std::numeric_limits<int64_t>::min()}, last{std::numeric_limits<int64_t>::max()};
    EXPECT_EQ(wait(store().events(first, last, {calendar}, 10)), std::vector{saved});
}

TEST_P(EventStoreContract, SearchesTheCalendarsNamedAndNoOthers) {
    const auto first = addCalendar("First");
    const auto second = addCalendar("Second");
    const auto third = addCalendar("Third");
    std::vector<CalendarEvent> saved;
    for (const auto& calendar : {first, second, third}) {
        auto given = sowing(calendar);
        given.startDate = later(given.startDate, static_cast<int64_t>(saved.size()) * 60);
        saved.push_back(save(given));
    }
    const auto from = at("2026-08-14T00:00:00Z"), to = at("2026-08-15T00:00:00Z");
    EXPECT_EQ(wait(store().events(from, to, {third, first}, 10)), (std::vector{saved[0], saved[2]}));
    EXPECT_EQ(wait(store().events(from, to, {second}, 10)), std::vector{saved[1]});
    EXPECT_EQ(wait(store().events(from, to, {}, 10)), std::vector<CalendarEvent>{});
    EXPECT_NE(failure([&] { wait(store().events(from, to, {first, "unknown"}, 10)); }), "");
}

TEST_P(EventStoreContract, OrdersByStartAndAnswersTheFirstOnes) {
    const auto first = addCalendar("First");
    const auto second = addCalendar("Second");
    for (const int hour : {5, 1, 4, 2, 8, 3, 7, 6}) {
        auto given = sowing(hour % 2 ? first : second);
        given.startDate = later(given.startDate, hour * 3600);
        given.endDate = later(given.startDate, (10 - hour) * 3600);
        given.title = std::to_string(hour);
        save(given);
    }
    putEvent(first, "series", "DTSTART:20260814T093000Z\nDURATION:PT1H\nRRULE:FREQ=HOURLY;COUNT=10\nSUMMARY:Hourly");
    const auto from = at("2026-08-14T00:00:00Z"), to = at("2026-08-16T00:00:00Z");
    const auto all = wait(store().events(from, to, {first, second}, 1'000));
    ASSERT_EQ(all.size(), 18u);
    EXPECT_TRUE(std::ranges::is_sorted(all, {}, &CalendarEvent::startDate));
    for (const size_t limit : {size_t{0}, size_t{1}, size_t{2}, size_t{7}, size_t{17}, size_t{18}, size_t{19}}) {
        const auto some = wait(store().events(from, to, {first, second}, limit));
        EXPECT_EQ(some,
                  std::vector(all.begin(), all.begin() + static_cast<std::ptrdiff_t>(std::min<size_t>(limit, 18))))
            << limit;
    }
    EXPECT_EQ(wait(store().events(from, to, {first, second}, std::numeric_limits<size_t>::max())), all);
}

TEST_P(EventStoreContract, KeepsTheOrderOfEventsThatStartTogether) {
    const auto first = addCalendar("First");
    const auto second = addCalendar("Second");
    for (int number = 0; number < 20; ++number) {
        auto given = sowing(number % 3 ? first : second);
        given.title = std::to_string(number * 7 % 20);
        save(given);
    }
    const auto from = at("2026-08-14T00:00:00Z"), to = at("2026-08-15T00:00:00Z");
    const auto all = wait(store().events(from, to, {first, second}, 1'000));
    ASSERT_EQ(all.size(), 20u);
    EXPECT_EQ(wait(store().events(from, to, {first, second}, 1'000)), all);
    EXPECT_EQ(wait(store().events(from, to, {first, second}, 7)), std::vector(all.begin(), all.begin() + 7));
    setting->reopen();
    EXPECT_EQ(wait(store().events(from, to, {first, second}, 1'000)), all);
}

TEST_P(EventStoreContract, KeepsManyEvents) {
    const auto calendar = addCalendar();
    const auto many = GetParam().many;
    std::string components;
    const auto first = at("2026-01-01T00:00:00Z");
    for (size_t number = 0; number < many; ++number) {
        auto stamp = formatDate(later(first, static_cast<int64_t>(number) * 600));
        std::erase(stamp, '-');
        std::erase(stamp, ':');
        components += component("VEVENT", "many-" + std::to_string(number),
                                "DTSTART:" + stamp + "\nDURATION:PT10M\nSUMMARY:Event " + std::to_string(number));
    }
    put(calendar, components);
    const auto events = eventsOf(calendar);
    ASSERT_EQ(events.size(), many);
    for (size_t number = 0; number < many; ++number) {
        ASSERT_EQ(events[number].title, "Event " + std::to_string(number));
        ASSERT_EQ(events[number].startDate, later(first, static_cast<int64_t>(number) * 600));
    }
    const auto middle = later(first, static_cast<int64_t>(many) / 2 * 600);
    EXPECT_EQ(wait(store().events(middle, later(middle, 6000), {calendar}, 1'000)).size(), 10u);
    EXPECT_EQ(wait(store().events(first, latestDate, {calendar}, 500)).size(), 500u);
    EXPECT_EQ(event(events.back().identifier), events.back());
    wait(store().removeEvent(events.back().identifier));
    EXPECT_EQ(eventsOf(calendar).size(), many - 1);
}

TEST_P(EventStoreContract, ReadsAfreshAtEveryCall) {
    const auto calendar = addCalendar();
    EXPECT_TRUE(eventsOf(calendar).empty());
    putEvent(calendar, "outside", "DTSTART:20260814T090000Z\nDTEND:20260814T100000Z\nSUMMARY:From outside");
    EXPECT_EQ(onlyEvent(calendar).title, "From outside");
    const auto list = addList();
    EXPECT_TRUE(remindersOf(list).empty());
    putTask(list, "outside-task", "SUMMARY:From outside");
    EXPECT_EQ(onlyReminder(list).title, "From outside");
}

} // namespace bridge
