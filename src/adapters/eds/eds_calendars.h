#pragma once

#include "adapters/eds/calendar_worker.h"
#include "adapters/eds/registry.h"

#include <map>

namespace bridge {

// The calendars that are listed at a moment, each with its worker. On the main thread; the loop outlives it.
class EdsCalendars {
public:
    EdsCalendars(EventLoop& loop, EdsPatience patience)
        : m_loop(loop), m_patience(patience), m_registry(loop, m_keeper, patience) {}

    EventLoop& loop() { return m_loop; }
    Registry& registry() { return m_registry; }

    // What the registry lists now.
    Task<SourceList> list();
    // Throws when there is none.
    Task<Calendar> require(EntityType type, std::string identifier);
    // In the order given, each once; throws when one is missing.
    Task<std::vector<Calendar>> requireAll(EntityType type, std::vector<std::string> identifiers);
    // With what is known about their being writable, for which it asks and waits a moment.
    Task<std::vector<Calendar>> described(std::vector<Calendar> calendars);

    // Lives as long as somebody holds it, also when its calendar is gone.
    std::shared_ptr<CalendarWorker> workerOf(const Calendar& calendar);

private:
    void forgetAllBut(const SourceList& list);

    EventLoop& m_loop;
    EdsPatience m_patience;
    std::shared_ptr<DeadlineKeeper> m_keeper = std::make_shared<DeadlineKeeper>();
    Registry m_registry;
    std::map<std::string, std::shared_ptr<CalendarWorker>> m_workers;
};

} // namespace bridge
