#pragma once

#include "adapters/dbus/glib_pointer.h"
#include "platform/event_store.h"

#include <libedataserver/libedataserver.h>
#include <memory>
#include <vector>

namespace bridge {

// A calendar as the registry knows it.
struct ListedCalendar {
    // Read-only as long as its own backend has not been asked.
    Calendar calendar;
    // May be used on any thread.
    std::shared_ptr<ESource> source;

    // For the beginning of a sentence.
    std::string subject() const;
};

// One look at the registry: what is enabled and shown, by name.
struct SourceList {
    std::vector<CalendarSource> accounts;
    std::vector<ListedCalendar> calendars;
    std::string defaultCalendar; // identifiers, of what may not be shown
    std::string defaultTaskList;

    // Nothing when there is none with this identifier.
    const ListedCalendar* find(const std::string& identifier) const;
};

// A registry of its own for each job, so that each sees what is there now. Blocks; throws PlatformError, also when the
// service is not there: the library itself would give an empty registry.
GObjectPointer<ESourceRegistry> openRegistry(GCancellable* cancellable);

SourceList readSources(ESourceRegistry* registry);

} // namespace bridge
