#pragma once

#include "base/date.h"

#include <optional>
#include <string>

namespace bridge::playground {

// So many days from today, negative before it, at this time of the user's clock; or all day.
struct SampleTime {
    int days = 0;
    std::optional<int> hour = std::nullopt;
    int minute = 0;
};

// Writes iCalendar. `properties` are further lines of an item.
class SampleItems {
public:
    explicit SampleItems(Date now) : m_now(now) {}

    void event(const std::string& title, SampleTime start, int minutes, const std::string& properties);
    void days(const std::string& title, int first, int count, const std::string& properties);
    // To the series that was added last: its occurrence at `which` takes place at `start`.
    void exception(const std::string& title, SampleTime which, SampleTime start, int minutes);
    void task(const std::string& title, const std::string& properties, std::optional<SampleTime> due = std::nullopt);

    // ";TZID=Europe/Lisbon:20260814T093000", what stands behind a property's name.
    std::string localTime(SampleTime time) const;
    std::string moment(SampleTime time) const; // 20260814T083000Z

    std::string text() const;

private:
    void add(const char* kind, const std::string& title, const std::string& properties);

    Date m_now;
    int m_count = 0;
    std::string m_components;
};

} // namespace bridge::playground
