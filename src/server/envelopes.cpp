#include "server/envelopes.h"

namespace bridge {

namespace {
// For when even the error can't be written down.
constexpr std::string_view lastResort = R"({"error":{"code":"encoding_error"}})";
} // namespace

std::string_view errorCode(const AppleBridgeError* error) {
    if (!error) return "internal_error";
    switch (error->kind()) {
    case AppleBridgeError::Case::permissionDenied:
        return "permission_denied";
    case AppleBridgeError::Case::calendarNotFound:
        return "calendar_not_found";
    case AppleBridgeError::Case::eventNotFound:
        return "event_not_found";
    case AppleBridgeError::Case::listNotFound:
        return "list_not_found";
    case AppleBridgeError::Case::reminderNotFound:
        return "reminder_not_found";
    case AppleBridgeError::Case::operationNotSupported:
        return "unsupported_operation";
    case AppleBridgeError::Case::confirmationRequired:
        return "confirmation_required";
    case AppleBridgeError::Case::malformedRequest:
        return "malformed_request";
    case AppleBridgeError::Case::resourceAccessDenied:
        return "resource_access_denied";
    case AppleBridgeError::Case::resourceNotFound:
        return "resource_not_found";
    case AppleBridgeError::Case::capabilityUnavailable:
        return "capability_unavailable";
    case AppleBridgeError::Case::capabilityDenied:
        return "capability_denied";
    case AppleBridgeError::Case::unsafePath:
        return "unsafe_path";
    case AppleBridgeError::Case::operationFailed:
        return "operation_failed";
    case AppleBridgeError::Case::outcomeUnknown:
        return "outcome_unknown";
    case AppleBridgeError::Case::invalidDateRange:
        return "invalid_date_range";
    }
    return "internal_error";
}

int errorStatus(const AppleBridgeError* error) {
    if (!error) return 500;
    switch (error->kind()) {
    case AppleBridgeError::Case::permissionDenied:
    case AppleBridgeError::Case::resourceAccessDenied:
    case AppleBridgeError::Case::capabilityDenied:
        return 403;
    default:
        return 400;
    }
}

BridgeResponse Responder::error(int status, std::string_view code, std::string_view message) const {
    try {
        const BridgeErrorEnvelope envelope{m_requestId, {std::string(code), std::string(message)}, m_clock.now()};
        return {status, encodeJSON(envelope), {}};
    } catch (const JSONError&) {
        return {status, std::string(lastResort), {}};
    }
}

BridgeResponse Responder::failure(const std::exception_ptr& thrown) const {
    try {
        std::rethrow_exception(thrown);
    } catch (const AppleBridgeError& known) {
        return error(errorStatus(&known), errorCode(&known), known.what());
    } catch (const std::exception& other) {
        return error(errorStatus(nullptr), errorCode(nullptr), other.what());
    }
}

} // namespace bridge
