#pragma once

#include "adapters/ical/calendar_object.h"

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace bridge {

inline Date at(std::string_view text) {
    return parseDate(text).value();
}

// Content lines with the line ends that belong between them.
inline std::string lines(const std::vector<std::string>& texts) {
    std::string all;
    for (const auto& text : texts)
        all += text + "\r\n";
    return all;
}

inline std::string vevent(const std::vector<std::string>& properties) {
    return "BEGIN:VEVENT\r\nUID:sowing@example.org\r\nDTSTAMP:20260101T000000Z\r\n" + lines(properties) +
           "END:VEVENT\r\n";
}

inline std::string vtodo(const std::vector<std::string>& properties) {
    return "BEGIN:VTODO\r\nUID:seeds@example.org\r\nDTSTAMP:20260101T000000Z\r\n" + lines(properties) + "END:VTODO\r\n";
}

inline std::string vcalendar(const std::string& components) {
    return "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//test//EN\r\n" + components + "END:VCALENDAR\r\n";
}

inline CalendarObject parseEvent(const std::vector<std::string>& properties) {
    return CalendarObject::parse(vcalendar(vevent(properties)));
}

inline CalendarObject parseTask(const std::vector<std::string>& properties) {
    return CalendarObject::parse(vcalendar(vtodo(properties)));
}

// "2026-08-14T09:00:00Z" for moments, the same with "local" instead of "Z" for floating ones.
inline std::string show(const EventTime& time) {
    auto text = formatDate(Date{time.seconds});
    if (time.isFloating) text.replace(text.size() - 1, 1, " local");
    return text;
}

inline std::vector<std::string> starts(const CalendarObject& object, std::string_view from = "0001-01-01T00:00:00Z",
                                       std::string_view to = "9999-12-31T00:00:00Z", size_t limit = 100) {
    std::vector<std::string> all;
    for (const auto& occurrence : object.occurrences(at(from), at(to), limit))
        all.push_back(show(occurrence.start));
    return all;
}

inline const Date now = at("2026-08-14T11:28:41Z");

} // namespace bridge
