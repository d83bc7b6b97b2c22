#include "sample_calendars.h"

#include "adapters/ical/calendar_file.h"
#include "base/date_components.h"
#include "sample_items.h"

#include <algorithm>
#include <stdexcept>

namespace bridge::playground {

namespace {

NewCalendar calendarIn(const std::string& sourceID, const char* title, EntityType entityType = EntityType::event) {
    return {entityType, sourceID, title, true};
}

NewCalendar readOnly(NewCalendar calendar) {
    calendar.allowsContentModifications = false;
    return calendar;
}

std::string fill(SqliteEventStore& store, const NewCalendar& calendar, const SampleItems& items) {
    const auto file = readCalendarFile(items.text());
    if (!file.problems.empty()) throw std::runtime_error("A sample has a fault: " + file.problems[0].reason);
    return store.importCalendar(calendar, file.objects).id;
}

void fillHome(SqliteEventStore& store, const std::string& account, Date now) {
    SampleItems home(now);
    home.event("Dentist", {1, 10}, 45,
               "LOCATION:12 Mill Lane\nBEGIN:VALARM\nACTION:DISPLAY\nDESCRIPTION:Dentist\n"
               "TRIGGER:-PT30M\nEND:VALARM");
    home.event("Dinner with Ada", {2, 19, 30}, 150, "DESCRIPTION:She brings the wine.\nLOCATION:At home");
    home.event("Choir", {-14, 20}, 90, "RRULE:FREQ=WEEKLY\nLOCATION:Town hall");
    home.event("Market", {-1, 9}, 60, "DESCRIPTION:Apples\\, honey\\, bread.");
    home.days("Grace's birthday", 3, 1, "RRULE:FREQ=YEARLY");
    home.days("Weekend by the sea", 5, 2, "LOCATION:Ferry leaves at nine");
    store.setDefaultCalendar(fill(store, calendarIn(account, "Home"), home));

    SampleItems errands(now);
    errands.task("Buy milk", "");
    errands.task("Water the seedlings", "RRULE:FREQ=DAILY\nDTSTART" + errands.localTime({0, 7}), SampleTime{0, 8});
    errands.task("Pay the window cleaner", "PRIORITY:1", SampleTime{1, 17});
    errands.task("Renew the library card", "PRIORITY:5\nDESCRIPTION:The card is in the blue folder.", SampleTime{-3});
    errands.task("Call the plumber", "STATUS:COMPLETED\nPERCENT-COMPLETE:100\nCOMPLETED:" + errands.moment({-2, 11}));
    store.setDefaultCalendar(fill(store, calendarIn(account, "Errands", EntityType::reminder), errands));

    SampleItems books(now);
    books.task("Middlemarch", "DESCRIPTION:George Eliot");
    books.task("雪国", "DESCRIPTION:川端康成");
    books.task("Don Quijote", "STATUS:COMPLETED\nCOMPLETED:" + books.moment({-30, 21}));
    fill(store, calendarIn(account, "Books", EntityType::reminder), books);
}

void fillWork(SqliteEventStore& store, const std::string& account, Date now) {
    SampleItems meetings(now);
    meetings.event("Team meeting", {-56, 9, 30}, 30,
                   "RRULE:FREQ=WEEKLY\nURL:https://meet.example.com/team\nEXDATE" + meetings.localTime({-7, 9, 30}));
    // The one of next week is later and longer.
    meetings.exception("Team meeting, with Grace", {7, 9, 30}, {7, 11}, 60);
    meetings.event("Review", {0, 14}, 60,
                   "ORGANIZER;CN=Grace:mailto:grace@example.com\n"
                   "ATTENDEE;CN=Ada;PARTSTAT=ACCEPTED:mailto:ada@example.com\n"
                   "CATEGORIES:REVIEW");
    fill(store, calendarIn(account, "Meetings"), meetings);

    SampleItems rooms(now);
    rooms.event("Large room: painters", {1, 8}, 480, "");
    rooms.event("Small room: interviews", {2, 13}, 180, "");
    fill(store, readOnly(calendarIn(account, "Rooms")), rooms);

    SampleItems followUps(now);
    followUps.task("Send the minutes", "PRIORITY:9", SampleTime{2});
    fill(store, calendarIn(account, "Follow-ups", EntityType::reminder), followUps);
}

void fillHolidays(SqliteEventStore& store, const std::string& account, Date now) {
    SampleItems holidays(now);
    holidays.days("Founders' Day", 4, 1, "TRANSP:TRANSPARENT");
    holidays.days("Harvest Week", 20, 7, "TRANSP:TRANSPARENT");
    fill(store, readOnly(calendarIn(account, "Holidays")), holidays);
}

} // namespace

Task<> makeSampleCalendars(SqliteEventStore& store, Date now) {
    const auto sources = co_await store.sources();
    const auto local = std::ranges::find(sources, SourceType::local, &CalendarSource::type);
    if (local == sources.end()) throw std::runtime_error("The calendars have no account on this computer.");
    fillHome(store, local->id, now);
    fillWork(store, store.addSource("Work", SourceType::calDAV), now);
    fillHolidays(store, store.addSource("Subscriptions", SourceType::subscribed), now);
}

} // namespace bridge::playground
