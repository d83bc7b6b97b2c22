#include "calendar_bridge_test.h"

#include <numeric>

namespace bridge {
namespace {

constexpr const char* itemNotAllowed = "Brindlefox resource access denied: The calendar containing this item is not "
                                       "authorized in Brindlefox Apple Bridge.";
constexpr const char* endsTooEarly = "The end date must be later than the start date.";

class EventSearch : public CalendarBridgeTest {
protected:
    EventSearch() { allowAll(); }

    std::vector<CalendarEventDescriptor> search(int64_t start, int64_t end,
                                                std::optional<int64_t> limit = std::nullopt) {
        return run(bridge.searchEvents({{start}, {end}, {}, limit}));
    }
};

TEST_F(EventSearch, DescribesAllThatAnEventHas) {
    CalendarEvent event;
    event.identifier = "full";
    event.externalIdentifier = "uid";
    event.calendarID = "team";
    event.title = "Sowing";
    event.startDate = {100};
    event.endDate = {200};
    event.isAllDay = true;
    event.location = "Garden";
    event.notes = "Bring seeds";
    event.url = "https://example.com/?q=%20#x";
    event.alarms = {{-600.0}};
    event.hasRecurrenceRules = true;
    store.allEvents = {event};
    EXPECT_EQ(search(0, 1000), (std::vector<CalendarEventDescriptor>{{"full",
                                                                      "uid",
                                                                      "team",
                                                                      "Team",
                                                                      "Sowing",
                                                                      {100},
                                                                      {200},
                                                                      true,
                                                                      "Garden",
                                                                      "Bring seeds",
                                                                      URL{"https://example.com/?q=%20#x"},
                                                                      true}}));
}

TEST_F(EventSearch, LeavesOutWhatAnEventHasNot) {
    addEvent("bare", "personal", 100, 200).title = std::nullopt;
    EXPECT_EQ(encodeJSON(search(0, 1000)),
              R"([{"calendarID":"personal","calendarTitle":"Personal","endDate":"1970-01-01T00:03:20Z",)"
              R"("hasRecurrenceRules":false,"id":"bare","isAllDay":false,"startDate":"1970-01-01T00:01:40Z",)"
              R"("title":""}])");
}

TEST_F(EventSearch, LeavesOutAStoredAddressThatIsNone) {
    for (const auto* odd : {"", "see below", "a\nb", "<http://example.com>", "back\\slash"})
        addEvent("odd", "personal", 100, 200).url = odd;
    for (const auto& event : search(0, 1000))
        EXPECT_EQ(event.url, std::nullopt);
    store.allEvents[0].url = "not/absolute";
    EXPECT_EQ(search(0, 1000)[0].url, URL{"not/absolute"});
}

TEST_F(EventSearch, EndsLaterThanItStarts) {
    EXPECT_EQ(failureOf(bridge.searchEvents({{100}, {100}, {"nowhere"}, {}})), endsTooEarly);
    EXPECT_EQ(failureOf(bridge.searchEvents({{100}, {99}, {}, {}})), endsTooEarly);
    EXPECT_EQ(failureOf(bridge.searchEvents({{100}, {101}, {}, {}})), "");
    EXPECT_EQ(failureOf(bridge.searchEvents({earliestDate, latestDate, {}, {}})), "");
}

TEST_F(EventSearch, IsOrderedByStartAndEqualOnesAsTheStoreHasThem) {
    addEvent("c", "personal", 300, 400);
    addEvent("a1", "team", 100, 400);
    addEvent("b", "holidays", 200, 400);
    addEvent("a2", "personal", 100, 150);
    EXPECT_EQ(idsOf(search(0, 1000)), (Strings{"a1", "a2", "b", "c"}));
}

TEST_F(EventSearch, IsLimitedToOneUpToFiveHundred) {
    for (int index = 600; index > 0; --index)
        addEvent(std::to_string(index), "personal", index, index + 1);
    const auto count = [&](std::optional<int64_t> limit) { return search(0, 10'000, limit).size(); };
    EXPECT_EQ(count(std::nullopt), 500u);
    EXPECT_EQ(count(0), 1u);
    EXPECT_EQ(count(-7), 1u);
    EXPECT_EQ(count(1), 1u);
    EXPECT_EQ(count(7), 7u);
    EXPECT_EQ(count(500), 500u);
    EXPECT_EQ(count(501), 500u);
    EXPECT_EQ(count(std::numeric_limits<int64_t>::max()), 500u);
    EXPECT_EQ(count(std::numeric_limits<int64_t>::min()), 1u);
    EXPECT_EQ(search(0, 10'000, 3).back().id, "3");
    EXPECT_EQ(search(0, 10'000).back().id, "500");
}

class NewEvent : public CalendarBridgeTest {
protected:
    NewEvent() {
        allowAll();
        request.calendarID = "team";
        request.title = "Sowing";
        request.startDate = {100};
        request.endDate = {200};
    }
    CalendarEventDescriptor create() { return run(bridge.createEvent(request)); }

    CreateCalendarEventRequest request;
};

TEST_F(NewEvent, IsSavedWithAllThatWasGiven) {
    request.title = " Sowing\n";
    request.isAllDay = true;
    request.location = "Garden";
    request.notes = "Bring seeds";
    request.url = URL{"https://example.com"};
    request.alarmOffsetSeconds = -600;
    const auto created = create();
    ASSERT_EQ(store.allEvents.size(), 1u);
    const auto& saved = store.allEvents.front();
    EXPECT_EQ(saved.title, "Sowing");
    EXPECT_EQ(saved.calendarID, "team");
    EXPECT_EQ(saved.startDate, Date{100});
    EXPECT_EQ(saved.endDate, Date{200});
    EXPECT_TRUE(saved.isAllDay);
    EXPECT_EQ(saved.location, "Garden");
    EXPECT_EQ(saved.notes, "Bring seeds");
    EXPECT_EQ(saved.url, "https://example.com");
    EXPECT_EQ(saved.alarms, std::vector{Alarm{-600.0}});
    EXPECT_EQ(created.id, saved.identifier);
    EXPECT_EQ(created.externalIdentifier, saved.externalIdentifier);
    EXPECT_EQ(created.calendarTitle, "Team");
    EXPECT_EQ(created.title, "Sowing");
    EXPECT_EQ(run(bridge.searchEvents({{0}, {1000}, {}, {}})), std::vector{created});
}

TEST_F(NewEvent, HasNothingThatWasNotGiven) {
    create();
    const auto& saved = store.allEvents.front();
    EXPECT_EQ(saved.location, std::nullopt);
    EXPECT_EQ(saved.notes, std::nullopt);
    EXPECT_EQ(saved.url, std::nullopt);
    EXPECT_TRUE(saved.alarms.empty());
    EXPECT_FALSE(saved.isAllDay);
}

TEST_F(NewEvent, IsCheckedInOrder) {
    run(bridge.setAllCalendars(false));
    request.title = "";
    request.endDate = {100};
    const auto before = everything();
    EXPECT_EQ(failureOf(bridge.createEvent(request)), endsTooEarly);
    request.endDate = {99};
    EXPECT_EQ(failureOf(bridge.createEvent(request)), endsTooEarly);
    request.endDate = {101};
    EXPECT_EQ(failureOf(bridge.createEvent(request)), malformed + "Calendar event title cannot be empty.");
    request.title = std::string(1001, 'x');
    EXPECT_EQ(failureOf(bridge.createEvent(request)),
              malformed + "Calendar event title cannot exceed 1,000 characters.");
    request.title = "Sowing";
    EXPECT_EQ(failureOf(bridge.createEvent(request)),
              denied + "Calendar access is not authorized for this identifier.");
    EXPECT_EQ(everything(), before);
}

TEST_F(NewEvent, TheStoreTakesNotIsItsOwnError) {
    request.calendarID = "holidays";
    EXPECT_EQ(failureOf(bridge.createEvent(request)), "platform: The calendar takes no changes.");
}

class EventUpdate : public CalendarBridgeTest {
protected:
    EventUpdate() {
        allowAll();
        auto& event = addEvent("event", "personal", 100, 200);
        event.location = "Garden";
        event.notes = "Bring seeds";
        event.url = "https://example.com";
        event.alarms = {{-60.0}, {Date{50}}, {-600.0}};
        request.identifier = "event";
    }
    CalendarEventDescriptor update() { return run(bridge.updateEvent(request)); }
    const CalendarEvent& saved() const { return store.allEvents.front(); }

    UpdateCalendarEventRequest request;
};

TEST_F(EventUpdate, ChangesOnlyWhatIsGiven) {
    const auto before = saved();
    const auto described = update();
    EXPECT_EQ(saved(), before);
    EXPECT_EQ(described.title, "Event event");
    EXPECT_EQ(described.calendarTitle, "Personal");

    request.title = "\tHarvest ";
    auto expected = before;
    expected.title = "Harvest";
    EXPECT_EQ(update().title, "Harvest");
    EXPECT_EQ(saved(), expected);
}

TEST_F(EventUpdate, SetsEveryField) {
    request.title = "Harvest";
    request.startDate = {300};
    request.endDate = {400};
    request.isAllDay = true;
    request.location = "Field";
    request.notes = "Bring baskets";
    request.url = URL{"https://example.org"};
    request.calendarID = "team";
    const auto described = update();
    EXPECT_EQ(described, (CalendarEventDescriptor{"event",
                                                  std::nullopt,
                                                  "team",
                                                  "Team",
                                                  "Harvest",
                                                  {300},
                                                  {400},
                                                  true,
                                                  "Field",
                                                  "Bring baskets",
                                                  URL{"https://example.org"},
                                                  false}));
    EXPECT_EQ(saved().calendarID, "team");
    EXPECT_EQ(saved().url, "https://example.org");
    EXPECT_EQ(saved().alarms.size(), 3u);
}

TEST_F(EventUpdate, ClearsWhatItSays) {
    request.clearLocation = true;
    request.clearNotes = true;
    request.clearURL = true;
    request.clearAlarm = true;
    const auto described = update();
    EXPECT_EQ(described.location, std::nullopt);
    EXPECT_EQ(described.notes, std::nullopt);
    EXPECT_EQ(described.url, std::nullopt);
    EXPECT_EQ(saved().location, std::nullopt);
    EXPECT_EQ(saved().notes, std::nullopt);
    EXPECT_EQ(saved().url, std::nullopt);
    EXPECT_TRUE(saved().alarms.empty());
}

TEST_F(EventUpdate, ClearsRatherThanSets) {
    request.location = "Field";
    request.notes = "Bring baskets";
    request.url = URL{"https://example.org"};
    request.clearLocation = true;
    request.clearNotes = true;
    request.clearURL = true;
    update();
    EXPECT_EQ(saved().location, std::nullopt);
    EXPECT_EQ(saved().notes, std::nullopt);
    EXPECT_EQ(saved().url, std::nullopt);
}

TEST_F(EventUpdate, ClearsNothingThatIsNotToBe) {
    const auto before = saved();
    request.clearLocation = false;
    request.clearNotes = false;
    request.clearURL = false;
    request.clearAlarm = false;
    update();
    EXPECT_EQ(saved(), before);
}

TEST_F(EventUpdate, LeavesTheOneAlarmThatItSets) {
    request.alarmOffsetSeconds = 0;
    update();
    EXPECT_EQ(saved().alarms, std::vector{Alarm{0.0}});
    request.clearAlarm = true;
    request.alarmOffsetSeconds = -90.5;
    update();
    EXPECT_EQ(saved().alarms, std::vector{Alarm{-90.5}});
}

TEST_F(EventUpdate, EndsLaterThanItStartsOrChangesNothing) {
    const auto before = everything();
    request.notes = "changed";
    request.startDate = {200};
    EXPECT_EQ(failureOf(bridge.updateEvent(request)), endsTooEarly);
    request.startDate = {201};
    EXPECT_EQ(failureOf(bridge.updateEvent(request)), endsTooEarly);
    request.startDate = std::nullopt;
    request.endDate = {100};
    EXPECT_EQ(failureOf(bridge.updateEvent(request)), endsTooEarly);
    EXPECT_EQ(everything(), before);
    request.startDate = {300};
    request.endDate = {301};
    update();
    EXPECT_EQ(saved().startDate, Date{300});
}

TEST_F(EventUpdate, IsCheckedInOrderAndChangesNothing) {
    addReminder("reminder", "errands", "Reminder");
    allowVanished("gone");
    run(bridge.setCalendar("team", false));
    const auto before = everything();
    request.identifier = "reminder";
    EXPECT_EQ(failureOf(bridge.updateEvent(request)), "Calendar event not found: reminder");
    request.identifier = "nothing";
    request.calendarID = "team";
    request.title = "";
    request.endDate = {0};
    EXPECT_EQ(failureOf(bridge.updateEvent(request)), "Calendar event not found: nothing");
    request.identifier = "event";
    EXPECT_EQ(failureOf(bridge.updateEvent(request)),
              denied + "Calendar access is not authorized for this identifier.");
    request.calendarID = "gone";
    EXPECT_EQ(failureOf(bridge.updateEvent(request)), "Calendar not found: gone");
    request.calendarID = "holidays";
    EXPECT_EQ(failureOf(bridge.updateEvent(request)), malformed + "Calendar event title cannot be empty.");
    request.title = "Harvest";
    EXPECT_EQ(failureOf(bridge.updateEvent(request)), endsTooEarly);
    request.endDate = std::nullopt;
    EXPECT_EQ(failureOf(bridge.updateEvent(request)), "platform: The calendar takes no changes.");
    EXPECT_EQ(everything(), before);
}

TEST_F(EventUpdate, NeedsItsCalendarAllowed) {
    run(bridge.setCalendar("personal", false));
    const auto before = everything();
    request.title = "";
    EXPECT_EQ(failureOf(bridge.updateEvent(request)), itemNotAllowed);
    request.calendarID = "team";
    EXPECT_EQ(failureOf(bridge.updateEvent(request)), itemNotAllowed);
    EXPECT_EQ(everything(), before);
}

class EventDeletion : public CalendarBridgeTest {};

TEST_F(EventDeletion, TakesThatEventAlone) {
    allowAll();
    addEvent("one", "personal", 100, 200);
    addEvent("two", "personal", 100, 200);
    run(bridge.deleteEvent("one"));
    EXPECT_EQ(idsOf(run(bridge.searchEvents({{0}, {1000}, {}, {}}))), Strings{"two"});
    EXPECT_EQ(failureOf(bridge.deleteEvent("one")), "Calendar event not found: one");
}

TEST_F(EventDeletion, IsCheckedInOrderAndChangesNothing) {
    addEvent("event", "personal", 100, 200);
    addReminder("reminder", "errands", "Reminder");
    const auto before = everything();
    EXPECT_EQ(failureOf(bridge.deleteEvent("nothing")), "Calendar event not found: nothing");
    EXPECT_EQ(failureOf(bridge.deleteEvent("")), "Calendar event not found: ");
    EXPECT_EQ(failureOf(bridge.deleteEvent("reminder")), "Calendar event not found: reminder");
    EXPECT_EQ(failureOf(bridge.deleteEvent("event")), itemNotAllowed);
    EXPECT_EQ(everything(), before);
}

} // namespace
} // namespace bridge
