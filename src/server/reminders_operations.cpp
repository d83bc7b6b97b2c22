#include "bridges/calendar/calendar_requests.h"
#include "bridges/calendar/reminder_requests.h"
#include "server/operation_rows.h"
#include "server/operation_tables.h"
#include "server/payloads.h"

namespace bridge {

namespace {

constexpr std::array rows{
    later("reminders.lists.list", BridgeCapability::reminderListsRead),
    later("reminders.sources.list", BridgeCapability::reminderListCreate),
    later<CreateAppleListRequest>("reminders.lists.create", BridgeCapability::reminderListCreate),
    later<UpdateAppleListRequest>("reminders.lists.update", BridgeCapability::reminderListUpdate),
    later<IdentifierPayload>("reminders.lists.delete", BridgeCapability::reminderListDelete, Confirm::always),
    later<SearchRemindersRequest>("reminders.search", BridgeCapability::reminderItemsRead),
    later<CreateReminderRequest>("reminders.create", BridgeCapability::reminderCreate),
    later<UpdateReminderRequest>("reminders.update", BridgeCapability::reminderUpdate),
    later<IdentifierPayload>("reminders.delete", BridgeCapability::reminderDelete, Confirm::always),
};
static_assert(wellFormed(rows));

} // namespace

std::span<const Operation> remindersOperations() {
    return rows;
}

} // namespace bridge
