#pragma once

#include "adapters/eds/calendar_registry.h"
#include "adapters/eds/calendar_worker.h"

namespace bridge {

// The calendars that are listed at a moment, each with its worker. On the main thread; the loop outlives it.
class EdsCalendars {
public:
    EdsCalendars(EventLoop& loop, EdsPatience patience) : m_setting{loop, patience} {}

    EventLoop& loop() { return m_setting.loop; }
    CalendarRegistry& registry() { return m_registry; }

    // What the registry lists now.
    Task<SourceList> list();
    // Throws when there is none.
    Task<Calendar> require(EntityType type, std::string identifier);
    // In the order given, each once; throws when one is missing.
    Task<std::vector<Calendar>> requireAll(EntityType type, std::vector<std::string> identifiers);
    // With what is known about their being writable, for which it asks and waits a moment.
    Task<std::vector<Calendar>> described(std::vector<Calendar> calendars);

    std::shared_ptr<CalendarWorker> workerOf(const Calendar& calendar) { return m_workers.of(calendar.id); }

private:
    WorkerSetting m_setting;
    CalendarRegistry m_registry{m_setting};
    SourceWorkers<CalendarWorker> m_workers{m_setting};
};

} // namespace bridge
