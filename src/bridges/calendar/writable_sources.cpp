#include "bridges/calendar/writable_sources.h"

#include "base/apple_bridge_error.h"
#include "base/text.h"
#include "bridges/calendar/sorting.h"

#include <set>

namespace bridge {

std::vector<CalendarSource> writableSources(const std::vector<CalendarSource>& sources,
                                            const std::vector<Calendar>& calendars,
                                            const std::optional<Calendar>& defaultCalendar) {
    std::set<std::string> writable;
    if (defaultCalendar) writable.insert(defaultCalendar->source.id);
    for (const auto& calendar : calendars)
        if (calendar.allowsContentModifications) writable.insert(calendar.source.id);

    std::vector<CalendarSource> kept;
    std::ranges::copy_if(sources, std::back_inserter(kept), [&](const CalendarSource& source) {
        return source.type < SourceType::subscribed && writable.contains(source.id);
    });
    return sortedBy(std::move(kept), [](const CalendarSource& source) { return sortKey(source.title); });
}

CalendarSource sourceForNewCalendar(const std::vector<CalendarSource>& writable,
                                    const std::optional<std::string>& asked,
                                    const std::optional<Calendar>& defaultCalendar) {
    const auto find = [&](const std::string& id) { return std::ranges::find(writable, id, &CalendarSource::id); };
    if (asked) {
        const auto found = find(*asked);
        if (found == writable.end()) throw AppleBridgeError::resourceNotFound(*asked);
        return *found;
    }
    if (defaultCalendar)
        if (const auto found = find(defaultCalendar->source.id); found != writable.end()) return *found;
    if (writable.empty())
        throw AppleBridgeError::operationFailed("No writable Apple account is available for the new list.");
    return writable.front();
}

} // namespace bridge
