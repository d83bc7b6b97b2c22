#include "bridges/calendar/apple_data_bridge.h"

namespace bridge {

AppleDataBridge::AppleDataBridge(EventStore& store, Authorization& authorization, UserDefaults& defaults)
    : m_store(store),
      m_accessPolicy(defaults),
      m_calendars(calendarKind, store, authorization, m_accessPolicy),
      m_reminderLists(reminderListKind, store, authorization, m_accessPolicy),
      m_events(store, m_calendars),
      m_reminders(store, m_reminderLists) {}

Task<> AppleDataBridge::setCalendar(std::string identifier, bool authorized) {
    return m_calendars.setAuthorized(std::move(identifier), authorized);
}

Task<> AppleDataBridge::setReminderList(std::string identifier, bool authorized) {
    return m_reminderLists.setAuthorized(std::move(identifier), authorized);
}

Task<AppleListDescriptor> AppleDataBridge::createCalendar(CreateAppleListRequest request) {
    return m_calendars.create(std::move(request));
}

Task<AppleListDescriptor> AppleDataBridge::createReminderList(CreateAppleListRequest request) {
    return m_reminderLists.create(std::move(request));
}

Task<AppleListDescriptor> AppleDataBridge::updateCalendar(UpdateAppleListRequest request) {
    return m_calendars.rename(std::move(request));
}

Task<AppleListDescriptor> AppleDataBridge::updateReminderList(UpdateAppleListRequest request) {
    return m_reminderLists.rename(std::move(request));
}

Task<> AppleDataBridge::deleteCalendar(std::string identifier) {
    return m_calendars.remove(std::move(identifier));
}

Task<> AppleDataBridge::deleteReminderList(std::string identifier) {
    return m_reminderLists.remove(std::move(identifier));
}

} // namespace bridge
