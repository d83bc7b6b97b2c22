#pragma once

#include "adapters/eds/registry_worker.h"
#include "adapters/eds/source_list.h"

namespace bridge {

// What the registry says of calendars and lists. On the main thread.
class CalendarRegistry {
public:
    explicit CalendarRegistry(WorkerSetting setting) : m_worker(std::move(setting)) {}

    // Whether the bus knows the services at all.
    Task<bool> isServed();
    Task<SourceList> list();
    // Answers with the sources as they are afterwards.
    Task<SourceList> addCalendar(EntityType type, std::string accountID, std::string title, std::string identifier);
    Task<SourceList> renameCalendar(std::string identifier, std::string title);
    Task<SourceList> removeCalendar(std::string identifier);

private:
    RegistryWorker m_worker;
};

} // namespace bridge
