#pragma once

#include "platform/authorization.h"

#include <array>
#include <string_view>

namespace bridge {

struct PrivacyServiceNames {
    PrivacyService service;
    std::string_view name;  // in files and on command lines
    std::string_view title; // as it is shown
};

// Every service, in the order of its enumerators.
inline constexpr std::array<PrivacyServiceNames, 5> privacyServices{{
    {PrivacyService::calendar, "calendar", "Calendar"},
    {PrivacyService::reminders, "reminders", "Reminders"},
    {PrivacyService::contacts, "contacts", "Contacts"},
    {PrivacyService::music, "music", "Music"},
    {PrivacyService::location, "location", "Location"},
}};
static_assert([] {
    for (size_t index = 0; index < privacyServices.size(); ++index)
        if (privacyServices[index].service != static_cast<PrivacyService>(index)) return false;
    return true;
}());

constexpr std::string_view nameOf(PrivacyService service) {
    return privacyServices[static_cast<size_t>(service)].name;
}

constexpr std::string_view titleOf(PrivacyService service) {
    return privacyServices[static_cast<size_t>(service)].title;
}

} // namespace bridge
