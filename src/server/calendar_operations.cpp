#include "bridges/calendar/calendar_requests.h"
#include "server/operation_rows.h"
#include "server/operation_tables.h"
#include "server/payloads.h"

namespace bridge {

namespace {

constexpr std::array rows{
    later("calendar.list", BridgeCapability::calendarsRead),
    later("calendar.sources.list", BridgeCapability::calendarCreate),
    later<CreateAppleListRequest>("calendar.create", BridgeCapability::calendarCreate),
    later<UpdateAppleListRequest>("calendar.update", BridgeCapability::calendarUpdate),
    later<IdentifierPayload>("calendar.delete", BridgeCapability::calendarDelete, Confirm::always),
    later<SearchEventsPayload>("calendar.events.search", BridgeCapability::calendarEventsRead),
    later<CreateCalendarEventRequest>("calendar.events.create", BridgeCapability::calendarEventCreate),
    later<UpdateCalendarEventRequest>("calendar.events.update", BridgeCapability::calendarEventUpdate),
    later<IdentifierPayload>("calendar.events.delete", BridgeCapability::calendarEventDelete, Confirm::always),
};
static_assert(wellFormed(rows));

} // namespace

std::span<const Operation> calendarOperations() {
    return rows;
}

} // namespace bridge
