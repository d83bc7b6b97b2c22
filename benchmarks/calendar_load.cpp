#include "benchmarks/calendar_load.h"

#include <fmt/format.h>

namespace bridge::bench {

namespace {

CalendarObject event(size_t number, const std::string& start, const std::string& further) {
    return CalendarObject::parse(fmt::format("BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//Measurements//EN\r\n"
                                             "BEGIN:VEVENT\r\nUID:event-{}@measurements\r\nDTSTAMP:20260101T000000Z\r\n"
                                             "DTSTART:{}\r\nDURATION:PT1H\r\nSUMMARY:Meeting number {}\r\n"
                                             "LOCATION:Room {}\r\nDESCRIPTION:What was said about {}\r\n{}"
                                             "END:VEVENT\r\nEND:VCALENDAR\r\n",
                                             number, start, number, number % 17, number, further));
}

std::string moment(int year, int month, size_t number) {
    return fmt::format("{:04}{:02}{:02}T{:02}{:02}00Z", year, month, number % 28 + 1, number % 24, number * 7 % 60);
}

// Any month of 2010 to 2029 but the measured one.
std::string elsewhere(size_t number) {
    const auto month = static_cast<int>(number % 11);
    return moment(2010 + static_cast<int>(number / 11 % 20), month < 2 ? month + 1 : month + 2, number);
}

} // namespace

Month measuredMonth() {
    return {*parseDate("2026-03-01T00:00:00Z"), *parseDate("2026-04-01T00:00:00Z")};
}

std::vector<CalendarObject> eventLoad(size_t count) {
    constexpr size_t inMonth = 100;
    constexpr size_t weekly = 10;
    std::vector<CalendarObject> objects;
    objects.reserve(count);
    for (size_t number = 0; number < inMonth; ++number)
        objects.push_back(event(number, moment(2026, 3, number), ""));
    for (size_t number = inMonth; number < inMonth + weekly; ++number)
        objects.push_back(event(number, moment(2025, 12, number), "RRULE:FREQ=WEEKLY\r\n"));
    const size_t series = count / 100 - weekly;
    for (size_t number = inMonth + weekly; number < count; ++number) {
        const bool isSeries = number < inMonth + weekly + series;
        const char* rule = !isSeries         ? ""
                           : number % 2 == 0 ? "RRULE:FREQ=YEARLY\r\n"
                                             : "RRULE:FREQ=WEEKLY;UNTIL=20251231T000000Z\r\n";
        objects.push_back(
            event(number, isSeries && number % 2 != 0 ? moment(2025, 1, number) : elsewhere(number), rule));
    }
    return objects;
}

std::vector<CalendarObject> reminderLoad(size_t count) {
    std::vector<CalendarObject> objects;
    objects.reserve(count);
    for (size_t number = 0; number < count; ++number) {
        const auto due = number % 2 == 0 ? fmt::format("DUE:{}\r\n", elsewhere(number)) : std::string();
        const auto notes =
            number % 3 == 0 ? fmt::format("DESCRIPTION:As agreed for bed {}\r\n", number) : std::string();
        objects.push_back(CalendarObject::parse(
            fmt::format("BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//Measurements//EN\r\nBEGIN:VTODO\r\n"
                        "UID:task-{}@measurements\r\nDTSTAMP:20260101T000000Z\r\nSUMMARY:Water bed number {}\r\n{}{}"
                        "PRIORITY:{}\r\nEND:VTODO\r\nEND:VCALENDAR\r\n",
                        number, number, due, notes, number % 10)));
    }
    return objects;
}

} // namespace bridge::bench
