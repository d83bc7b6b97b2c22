#pragma once

#include "platform/event_store.h"
#include "tests/adapters/eds/neighbour_registry.h"

#include <string_view>

namespace bridge {

// What another program of the same desktop does with calendars.
class EdsNeighbour : public NeighbourRegistry {
public:
    // Answers with the new source's identifier.
    static std::string addLocalCalendar(EntityType type, std::string_view title);
    // A file that the service may only read.
    static std::string addReadOnlyCalendar(EntityType type, std::string_view title);
    // One that is fetched from an address.
    static std::string addWebCalendar(std::string_view title, std::string_view address);
    static void setDefault(EntityType type, const std::string& identifier);
    // Every calendar and list that can go.
    static void removeAllCalendars();

    // A read-only calendar must not have been opened yet: the service reads its file then.
    static void put(const std::string& identifier, std::string_view iCalendar);
    // Both empty when there are none.
    static std::string stored(const std::string& identifier, std::string_view uid);
    static void remove(const std::string& identifier, std::string_view uid);
};

} // namespace bridge
