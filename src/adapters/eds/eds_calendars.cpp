#include "adapters/eds/eds_calendars.h"

#include <algorithm>

namespace bridge {

Task<SourceList> EdsCalendars::list() {
    auto listing = m_registry.list();
    auto list = co_await std::move(listing);
    m_workers.forgetAllBut(list);
    co_return list;
}

Task<Calendar> EdsCalendars::require(EntityType type, std::string identifier) {
    std::vector<std::string> identifiers;
    identifiers.push_back(std::move(identifier));
    auto requiring = requireAll(type, std::move(identifiers));
    auto found = co_await std::move(requiring);
    co_return std::move(found.front());
}

Task<std::vector<Calendar>> EdsCalendars::requireAll(EntityType type, std::vector<std::string> identifiers) {
    auto listing = list();
    const auto sources = co_await std::move(listing);
    std::vector<Calendar> found;
    for (const auto& identifier : identifiers) {
        const auto* calendar = sources.find(identifier);
        if (!calendar || calendar->entityType != type)
            throw PlatformError(type == EntityType::event ? "There is no such calendar." : "There is no such list.");
        const auto isThis = [&](const Calendar& other) { return other.id == identifier; };
        if (std::none_of(found.begin(), found.end(), isThis)) found.push_back(*calendar);
    }
    co_return found;
}

Task<std::vector<Calendar>> EdsCalendars::described(std::vector<Calendar> calendars) {
    Latch learnt(m_setting.loop);
    std::vector<std::shared_ptr<CalendarWorker>> workers;
    for (const auto& calendar : calendars) {
        workers.push_back(workerOf(calendar));
        workers.back()->learn(calendar, learnt);
    }
    auto waiting = learnt.all(m_setting.patience.listing);
    co_await waiting;
    std::vector<Calendar> described;
    for (size_t index = 0; index < calendars.size(); ++index) {
        auto calendar = std::move(calendars[index]);
        calendar.allowsContentModifications = workers[index]->isKnownWritable();
        described.push_back(std::move(calendar));
    }
    co_return described;
}

} // namespace bridge
