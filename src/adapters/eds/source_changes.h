#pragma once

#include "adapters/eds/source_registry.h"
#include "platform/event_store.h"

namespace bridge {

// These block and throw PlatformError.

struct NewCalendar {
    EntityType type;
    std::string accountID;
    std::string title;
    std::string identifier;
};

void addCalendar(const SourceRegistry& registry, const NewCalendar& wanted);
void renameCalendar(const SourceRegistry& registry, const Calendar& calendar, const std::string& title);
void removeCalendar(const SourceRegistry& registry, const Calendar& calendar);

} // namespace bridge
