#include "bridges/calendar/apple_data_bridge.h"
#include "server/operation_rows.h"
#include "server/operation_tables.h"

namespace bridge {

namespace {

constexpr std::array rows{
    operation<&AppleDataBridge::authorizedReminderLists>("reminders.lists.list", BridgeCapability::reminderListsRead),
    operation<&AppleDataBridge::listReminderSources>("reminders.sources.list", BridgeCapability::reminderListCreate),
    operation<&AppleDataBridge::createReminderList>("reminders.lists.create", BridgeCapability::reminderListCreate),
    operation<&AppleDataBridge::updateReminderList>("reminders.lists.update", BridgeCapability::reminderListUpdate),
    deletion<&AppleDataBridge::deleteReminderList>("reminders.lists.delete", BridgeCapability::reminderListDelete),
    operation<&AppleDataBridge::searchReminders>("reminders.search", BridgeCapability::reminderItemsRead),
    operation<&AppleDataBridge::createReminder>("reminders.create", BridgeCapability::reminderCreate),
    operation<&AppleDataBridge::updateReminder>("reminders.update", BridgeCapability::reminderUpdate),
    deletion<&AppleDataBridge::deleteReminder>("reminders.delete", BridgeCapability::reminderDelete),
};
static_assert(wellFormed(rows));

} // namespace

std::span<const Operation> remindersOperations() {
    return rows;
}

} // namespace bridge
