#pragma once

#include "base/apple_bridge_error.h"
#include "platform/authorization.h"
#include "platform/event_store.h"

namespace bridge {

// What the rules of calendars and of reminder lists differ in, apart from the kind of item: mostly their words.
struct ContainerKind {
    EntityType entityType;
    PrivacyService service;
    std::string_view label; // of its title
    // AppleBridgeError resourceAccessDenied with these when...
    std::string_view noneAuthorized;
    std::string_view noneAvailable;
    std::string_view targetNotAuthorized;    // ...an item is to go where it may not
    std::string_view containerNotAuthorized; // ...it, or an item in it, may not be changed
    std::string_view ambiguous;              // malformedRequest when no container was named and none can be chosen
    AppleBridgeError (*notFound)(std::string_view identifier);
    AppleBridgeError (*itemNotFound)(std::string_view identifier);
};

extern const ContainerKind calendarKind;
extern const ContainerKind reminderListKind;

} // namespace bridge
