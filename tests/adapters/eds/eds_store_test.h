#pragma once

#include "tests/adapters/eds/eds_event_store_under_test.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace bridge {

class EdsStoreTest : public testing::Test {
protected:
    void SetUp() override {
        if (const auto hindrance = PrivateEds::hindrance(); !hindrance.empty()) GTEST_SKIP() << hindrance;
        open({});
    }
    void open(EdsPatience patience) { setting = std::make_unique<EdsEventStoreUnderTest>(patience); }

    EdsEventStore& store() { return setting->store(); }
    PrivateEds& eds() { return PrivateEds::get(); }
    template <typename T> T wait(Task<T> task) { return setting->wait(std::move(task)); }
    // Until the task is done or has gone on so many times.
    template <typename T> void advance(const Task<T>& task, int turns) {
        while (!task.done() && turns-- > 0)
            setting->loop().waitOnce();
    }

    template <typename Call> std::string failure(Call&& call) {
        try {
            call();
        } catch (const PlatformError& error) {
            return error.what();
        }
        return {};
    }

    std::string addCalendar(const std::string& title = "Garden", EntityType type = EntityType::event) {
        return wait(store().addCalendar(type, "local-stub", title)).id;
    }
    std::optional<Calendar> listed(const std::string& identifier, EntityType type = EntityType::event) {
        for (auto& calendar : wait(store().calendars(type)))
            if (calendar.id == identifier) return calendar;
        return std::nullopt;
    }
    CalendarEvent save(const std::string& calendarID, const std::string& title = "Sowing") {
        CalendarEvent event;
        event.calendarID = calendarID;
        event.title = title;
        event.startDate = noon;
        event.endDate = {noon.secondsSince1970 + 3600};
        return wait(store().saveEvent(event));
    }
    Task<std::vector<CalendarEvent>> reading(const std::string& calendarID) {
        return store().events({noon.secondsSince1970 - 100 * 86400}, {noon.secondsSince1970 + 100 * 86400},
                              {calendarID}, 1'000);
    }
    std::vector<CalendarEvent> events(const std::string& calendarID) { return wait(reading(calendarID)); }
    void put(const std::string& calendarID, const std::string& uid, const std::string& properties) {
        EdsNeighbour::put(calendarID, "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//Another//EN\r\n" +
                                          item(uid, properties) + "END:VCALENDAR\r\n");
    }
    static std::string item(const std::string& uid, const std::string& properties) {
        return "BEGIN:VEVENT\r\nUID:" + uid + "\r\nDTSTAMP:20260101T000000Z\r\n" + properties + "END:VEVENT\r\n";
    }

    const Date noon{1786708800}; // 2026-08-14T12:00:00Z
    std::unique_ptr<EdsEventStoreUnderTest> setting;
};

} // namespace bridge
