#pragma once

#include "tests/contracts/event_store_under_test.h"
#include "tests/support/print_items.h"
#include "tests/support/time_zone.h"

#include <algorithm>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <ostream>
#include <string>

// What the contract's tests share. The tests themselves stand in event_store_contract.h.

namespace bridge {

struct RuleExample;

struct EventStoreKind {
    std::string name;
    std::function<std::unique_ptr<EventStoreUnderTest>()> make;
    size_t many = 1'000;          // how many items a calendar of this store takes in a moment
    bool keepsOuterSpaces = true; // or drops those at both ends of a text
};

inline void PrintTo(const EventStoreKind& kind, std::ostream* out) {
    *out << kind.name;
}

inline std::string nameOf(const testing::TestParamInfo<EventStoreKind>& info) {
    return info.param.name;
}

class EventStoreContract : public testing::TestWithParam<EventStoreKind> {
protected:
    void SetUp() override {
        setting = GetParam().make();
        if (const auto hindrance = setting->hindrance(); !hindrance.empty()) GTEST_SKIP() << hindrance;
    }

    EventStore& store() { return setting->store(); }
    template <typename T> T wait(Task<T> task) { return setting->wait(std::move(task)); }

    // The words of the PlatformError that the call throws; "" when it throws none.
    template <typename Call> std::string failure(Call&& call) {
        try {
            call();
        } catch (const PlatformError& error) {
            EXPECT_STRNE(error.what(), "") << "a failure without words";
            return error.what();
        }
        return {};
    }

    // What is left of a text in this store.
    static std::string kept(const std::string& text) {
        if (GetParam().keepsOuterSpaces) return text;
        const auto first = text.find_first_not_of(" \t");
        return first == text.npos ? "" : text.substr(first, text.find_last_not_of(" \t") + 1 - first);
    }

    CalendarSource account() {
        for (auto& source : wait(store().sources()))
            if (source.type == SourceType::local) return source;
        ADD_FAILURE() << "no local account";
        return {};
    }
    std::string addCalendar(const std::string& title = "Garden", EntityType type = EntityType::event) {
        return wait(store().addCalendar(type, account().id, title)).id;
    }
    std::string addList(const std::string& title = "Shopping") { return addCalendar(title, EntityType::reminder); }
    bool isListed(const std::string& identifier, EntityType type) {
        const auto calendars = wait(store().calendars(type));
        return std::ranges::any_of(calendars, [&](const Calendar& each) { return each.id == identifier; });
    }

    static Date at(std::string_view text) {
        const auto date = parseDate(text);
        EXPECT_TRUE(date) << text;
        return date.value_or(Date{});
    }
    static Date later(Date date, int64_t seconds) { return {date.secondsSince1970 + seconds}; }
    static Date midnight(int year, int month, int day) { return dateFrom({year, month, day}).value_or(Date{}); }

    // An hour of a morning in August, with nothing but a title.
    CalendarEvent sowing(const std::string& calendarID) {
        CalendarEvent event;
        event.calendarID = calendarID;
        event.title = "Sowing";
        event.startDate = at("2026-08-14T09:00:00Z");
        event.endDate = at("2026-08-14T10:00:00Z");
        return event;
    }
    CalendarEvent fullSowing(const std::string& calendarID) {
        auto event = sowing(calendarID);
        event.location = "Bed 4";
        event.notes = "Two rows of chard.\nWater well.";
        event.url = "https://example.com/chard?row=2&depth=3";
        event.alarms = {Alarm{-900.0}};
        return event;
    }
    Reminder seeds(const std::string& listID) {
        Reminder reminder;
        reminder.listID = listID;
        reminder.title = "Seeds";
        return reminder;
    }
    CalendarEvent save(const CalendarEvent& event) { return wait(store().saveEvent(event)); }
    Reminder save(const Reminder& reminder) { return wait(store().saveReminder(reminder)); }

    std::vector<CalendarEvent> eventsBetween(const std::string& calendarID, std::string_view from, std::string_view to,
                                             size_t limit = 100'000) {
        return wait(store().events(at(from), at(to), {calendarID}, limit));
    }
    // All of them that can be in question here.
    std::vector<CalendarEvent> eventsOf(const std::string& calendarID) {
        return eventsBetween(calendarID, "1990-01-01T00:00:00Z", "2060-01-01T00:00:00Z");
    }
    CalendarEvent onlyEvent(const std::string& calendarID) {
        const auto events = eventsOf(calendarID);
        EXPECT_EQ(events.size(), 1u);
        return events.empty() ? CalendarEvent{} : events.front();
    }
    std::vector<Reminder> remindersOf(const std::string& listID) { return wait(store().reminders({listID})); }
    Reminder onlyReminder(const std::string& listID) {
        const auto reminders = remindersOf(listID);
        EXPECT_EQ(reminders.size(), 1u);
        return reminders.empty() ? Reminder{} : reminders.front();
    }
    std::optional<CalendarEvent> event(const std::string& identifier) {
        auto item = wait(store().item(identifier));
        if (!item || !std::holds_alternative<CalendarEvent>(*item)) return std::nullopt;
        return std::get<CalendarEvent>(*item);
    }
    std::optional<Reminder> reminder(const std::string& identifier) {
        auto item = wait(store().item(identifier));
        if (!item || !std::holds_alternative<Reminder>(*item)) return std::nullopt;
        return std::get<Reminder>(*item);
    }

    // Puts components, written with plain line ends, into a calendar from outside.
    void put(const std::string& calendarID, std::string_view components) {
        std::string text = "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//Another Program//EN\r\n";
        for (const char character : components) {
            if (character == '\n')
                text += text.ends_with('\n') ? "" : "\r\n"; // empty lines are for the reader
            else
                text += character;
        }
        if (!text.ends_with('\n')) text += "\r\n";
        setting->put(calendarID, text + "END:VCALENDAR\r\n");
    }
    // Puts an event with one UID; `properties` are further lines.
    void putEvent(const std::string& calendarID, const std::string& uid, const std::string& properties) {
        put(calendarID, component("VEVENT", uid, properties));
    }
    void putTask(const std::string& listID, const std::string& uid, const std::string& properties) {
        put(listID, component("VTODO", uid, properties));
    }
    static std::string component(const std::string& kind, const std::string& uid, const std::string& properties) {
        return "BEGIN:" + kind + "\nUID:" + uid + "\nDTSTAMP:20260101T000000Z\n" + properties + "\nEND:" + kind + "\n";
    }

    // The stored item without the folding of its lines and without carriage returns.
    std::string storedText(const std::string& calendarID, std::string_view uid) {
        auto text = setting->stored(calendarID, uid);
        std::erase(text, '\r');
        std::string unfolded;
        for (size_t place = 0; place < text.size(); ++place) {
            if (text[place] == '\n' && place + 1 < text.size() && (text[place + 1] == ' ' || text[place + 1] == '\t'))
                ++place;
            else
                unfolded += text[place];
        }
        return unfolded;
    }
    static size_t count(std::string_view text, std::string_view part) {
        size_t found = 0;
        for (auto place = text.find(part); place != text.npos; place = text.find(part, place + part.size()))
            ++found;
        return found;
    }
    static bool has(std::string_view text, std::string_view part) { return text.find(part) != text.npos; }

    // That these rules give these times, which are those of the clocks in a place.
    void expectOccurrences(const std::vector<RuleExample>& examples, const std::string& place);

    // First, since a store may look at the zone when it opens, and lasting longest.
    UserTimeZone zone{"Europe/Lisbon"};
    std::unique_ptr<EventStoreUnderTest> setting;
};
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(EventStoreContract);

} // namespace bridge
