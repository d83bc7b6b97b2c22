#include "bridges/calendar/apple_data_bridge.h"
#include "server/operation_rows.h"
#include "server/operation_tables.h"

namespace bridge {

namespace {

constexpr std::array rows{
    operation<&AppleDataBridge::authorizedCalendars>("calendar.list", BridgeCapability::calendarsRead),
    operation<&AppleDataBridge::listCalendarSources>("calendar.sources.list", BridgeCapability::calendarCreate),
    operation<&AppleDataBridge::createCalendar>("calendar.create", BridgeCapability::calendarCreate),
    operation<&AppleDataBridge::updateCalendar>("calendar.update", BridgeCapability::calendarUpdate),
    deletion<&AppleDataBridge::deleteCalendar>("calendar.delete", BridgeCapability::calendarDelete),
    operation<&AppleDataBridge::searchEvents>("calendar.events.search", BridgeCapability::calendarEventsRead),
    operation<&AppleDataBridge::createEvent>("calendar.events.create", BridgeCapability::calendarEventCreate),
    operation<&AppleDataBridge::updateEvent>("calendar.events.update", BridgeCapability::calendarEventUpdate),
    deletion<&AppleDataBridge::deleteEvent>("calendar.events.delete", BridgeCapability::calendarEventDelete),
};
static_assert(wellFormed(rows));

} // namespace

std::span<const Operation> calendarOperations() {
    return rows;
}

} // namespace bridge
