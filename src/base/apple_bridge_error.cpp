#include "base/apple_bridge_error.h"

namespace bridge {

namespace {

std::string join(std::string_view before, std::string_view detail, std::string_view after = "") {
    std::string message;
    message.reserve(before.size() + detail.size() + after.size());
    return message.append(before).append(detail).append(after);
}

} // namespace

AppleBridgeError AppleBridgeError::permissionDenied(std::string_view service) {
    return {Case::permissionDenied, join("Full access to ", service, " has not been granted.")};
}

AppleBridgeError AppleBridgeError::calendarNotFound(std::string_view identifier) {
    return {Case::calendarNotFound, join("Calendar not found: ", identifier)};
}

AppleBridgeError AppleBridgeError::eventNotFound(std::string_view identifier) {
    return {Case::eventNotFound, join("Calendar event not found: ", identifier)};
}

AppleBridgeError AppleBridgeError::listNotFound(std::string_view identifier) {
    return {Case::listNotFound, join("Reminder list not found: ", identifier)};
}

AppleBridgeError AppleBridgeError::reminderNotFound(std::string_view identifier) {
    return {Case::reminderNotFound, join("Reminder not found: ", identifier)};
}

AppleBridgeError AppleBridgeError::operationNotSupported(std::string_view operation) {
    return {Case::operationNotSupported, join("Unsupported bridge operation: ", operation)};
}

AppleBridgeError AppleBridgeError::confirmationRequired(std::string_view operation) {
    return {Case::confirmationRequired, join("Explicit confirmation is required for ", operation, ".")};
}

AppleBridgeError AppleBridgeError::malformedRequest(std::string_view detail) {
    return {Case::malformedRequest, join("Malformed bridge request: ", detail)};
}

AppleBridgeError AppleBridgeError::resourceAccessDenied(std::string_view detail) {
    return {Case::resourceAccessDenied, join("Brindlefox resource access denied: ", detail)};
}

AppleBridgeError AppleBridgeError::resourceNotFound(std::string_view identifierOrPath) {
    return {Case::resourceNotFound, join("Resource not found: ", identifierOrPath)};
}

AppleBridgeError AppleBridgeError::capabilityUnavailable(std::string_view detail) {
    return {Case::capabilityUnavailable, join("Capability unavailable: ", detail)};
}

AppleBridgeError AppleBridgeError::capabilityDenied(std::string_view capability) {
    return {Case::capabilityDenied, join("Brindlefox capability is disabled: ", capability)};
}

AppleBridgeError AppleBridgeError::unsafePath(std::string_view path) {
    return {Case::unsafePath, join("Path is outside the authorized roots: ", path)};
}

AppleBridgeError AppleBridgeError::operationFailed(std::string_view detail) {
    return {Case::operationFailed, join("Operation failed: ", detail)};
}

AppleBridgeError AppleBridgeError::outcomeUnknown(std::string_view detail) {
    return {Case::outcomeUnknown, join("Operation outcome is unknown: ", detail)};
}

AppleBridgeError AppleBridgeError::invalidDateRange() {
    return {Case::invalidDateRange, "The end date must be later than the start date."};
}

} // namespace bridge
