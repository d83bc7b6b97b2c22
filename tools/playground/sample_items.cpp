#include "sample_items.h"

#include "base/date_components.h"

#include <chrono>
#include <fmt/format.h>
#include <stdexcept>

namespace bridge::playground {

namespace {

DateComponents componentsOf(Date now, SampleTime time) {
    using namespace std::chrono;
    const auto today = componentsToTheMinute(now);
    const auto day = sys_days(year(today.year) / static_cast<unsigned>(today.month) / today.day) + days(time.days);
    const year_month_day date(day);
    DateComponents components{static_cast<int>(date.year()), static_cast<int>(static_cast<unsigned>(date.month())),
                              static_cast<int>(static_cast<unsigned>(date.day()))};
    components.hour = time.hour;
    if (time.hour) components.minute = time.minute;
    components.timeZone = today.timeZone;
    return components;
}

std::string dayText(const DateComponents& components) {
    return fmt::format("{:04}{:02}{:02}", components.year, components.month, components.day);
}

std::string unpunctuated(std::string text) {
    std::erase(text, '-');
    std::erase(text, ':');
    return text;
}

} // namespace

std::string SampleItems::localTime(SampleTime time) const {
    const auto components = componentsOf(m_now, time);
    if (!time.hour) return ";VALUE=DATE:" + dayText(components);
    return fmt::format(";TZID={}:{}T{:02}{:02}00", userTimeZone(), dayText(components), *time.hour, time.minute);
}

std::string SampleItems::moment(SampleTime time) const {
    const auto date = dateFrom(componentsOf(m_now, time));
    if (!date) throw std::runtime_error("A sample has no date.");
    return unpunctuated(formatDate(*date));
}

void SampleItems::event(const std::string& title, SampleTime start, int minutes, const std::string& properties) {
    ++m_count;
    add("VEVENT", title, fmt::format("DTSTART{}\nDURATION:PT{}M\n{}", localTime(start), minutes, properties));
}

void SampleItems::days(const std::string& title, int first, int count, const std::string& properties) {
    ++m_count;
    add("VEVENT", title,
        fmt::format("DTSTART{}\nDTEND{}\n{}", localTime({first}), localTime({first + count}), properties));
}

void SampleItems::exception(const std::string& title, SampleTime which, SampleTime start, int minutes) {
    add("VEVENT", title,
        fmt::format("RECURRENCE-ID{}\nDTSTART{}\nDURATION:PT{}M", localTime(which), localTime(start), minutes));
}

void SampleItems::task(const std::string& title, const std::string& properties, std::optional<SampleTime> due) {
    ++m_count;
    const auto time = due ? "DUE" + localTime(*due) + "\n" : "";
    add("VTODO", title, time + properties);
}

void SampleItems::add(const char* kind, const std::string& title, const std::string& properties) {
    m_components +=
        fmt::format("BEGIN:{}\nUID:sample-{}\nDTSTAMP:{}\nSUMMARY:{}\n{}{}END:{}\n", kind, m_count,
                    unpunctuated(formatDate(m_now)), title, properties, properties.empty() ? "" : "\n", kind);
}

std::string SampleItems::text() const {
    return "BEGIN:VCALENDAR\nVERSION:2.0\nPRODID:-//Brindlefox//Playground//EN\n" + m_components + "END:VCALENDAR\n";
}

} // namespace bridge::playground
