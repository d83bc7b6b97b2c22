#pragma once

#include "adapters/eds/source_list.h"

namespace bridge {

// These block and throw PlatformError.

struct NewCalendar {
    EntityType type;
    std::string accountID;
    std::string title;
    std::string identifier;
};

void addCalendar(ESourceRegistry* registry, const NewCalendar& wanted, GCancellable* cancellable);
void renameCalendar(const ListedCalendar& listed, const std::string& title, GCancellable* cancellable);
void removeCalendar(const ListedCalendar& listed, GCancellable* cancellable);

} // namespace bridge
