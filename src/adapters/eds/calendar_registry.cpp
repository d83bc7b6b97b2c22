#include "adapters/eds/calendar_registry.h"

#include "adapters/eds/eds_names.h"
#include "adapters/eds/source_changes.h"

namespace bridge {

namespace {

Calendar require(const SourceRegistry& registry, const std::string& identifier) {
    const auto list = listed(registry.sources());
    const auto* calendar = list.find(identifier);
    if (!calendar) throw PlatformError("There is no such calendar.");
    return *calendar;
}

} // namespace

Task<bool> CalendarRegistry::isServed() {
    return m_worker.isServed(calendarFactoryName);
}

Task<SourceList> CalendarRegistry::list() {
    return m_worker.read([](const SourceRegistry& registry) { return listed(registry.sources()); });
}

Task<SourceList> CalendarRegistry::addCalendar(EntityType type, std::string accountID, std::string title,
                                               std::string identifier) {
    return m_worker.write([type, accountID = std::move(accountID), title = std::move(title),
                           identifier = std::move(identifier)](const SourceRegistry& registry) {
        bridge::addCalendar(registry, {type, accountID, title, identifier});
        return listed(registry.sources());
    });
}

Task<SourceList> CalendarRegistry::renameCalendar(std::string identifier, std::string title) {
    return m_worker.write(
        [identifier = std::move(identifier), title = std::move(title)](const SourceRegistry& registry) {
            bridge::renameCalendar(registry, require(registry, identifier), title);
            return listed(registry.sources());
        });
}

Task<SourceList> CalendarRegistry::removeCalendar(std::string identifier) {
    return m_worker.write([identifier = std::move(identifier)](const SourceRegistry& registry) {
        bridge::removeCalendar(registry, require(registry, identifier));
        return listed(registry.sources());
    });
}

} // namespace bridge
