#include "bridges/calendar/container_kind.h"

namespace bridge {

constexpr ContainerKind calendarKind{
    .entityType = EntityType::event,
    .service = PrivacyService::calendar,
    .label = "Calendar",
    .noneAuthorized = "No calendars have been authorized in Brindlefox Apple Bridge.",
    .noneAvailable = "No currently available calendars are authorized in Brindlefox Apple Bridge.",
    .targetNotAuthorized = "Calendar access is not authorized for this identifier.",
    .containerNotAuthorized = "The calendar containing this item is not authorized in Brindlefox Apple Bridge.",
    .ambiguous = "calendarID is required unless exactly one writable calendar is authorized or the default calendar is "
                 "authorized.",
    .notFound = &AppleBridgeError::calendarNotFound,
    .itemNotFound = &AppleBridgeError::eventNotFound,
};

constexpr ContainerKind reminderListKind{
    .entityType = EntityType::reminder,
    .service = PrivacyService::reminders,
    .label = "Reminder list",
    .noneAuthorized = "No reminder lists have been authorized in Brindlefox Apple Bridge.",
    .noneAvailable = "No currently available reminder lists are authorized in Brindlefox Apple Bridge.",
    .targetNotAuthorized = "Reminder-list access is not authorized for this identifier.",
    .containerNotAuthorized = "The reminder list containing this item is not authorized in Brindlefox Apple Bridge.",
    .ambiguous = "listID is required unless exactly one writable reminder list is authorized or the default list is "
                 "authorized.",
    .notFound = &AppleBridgeError::listNotFound,
    .itemNotFound = &AppleBridgeError::reminderNotFound,
};

} // namespace bridge
