#include "server/wire_errors.h"

namespace bridge {

WireError wireError(AppleBridgeError::Case kind) {
    switch (kind) {
    case AppleBridgeError::Case::permissionDenied:
        return {"permission_denied", 403};
    case AppleBridgeError::Case::calendarNotFound:
        return {"calendar_not_found", 400};
    case AppleBridgeError::Case::eventNotFound:
        return {"event_not_found", 400};
    case AppleBridgeError::Case::listNotFound:
        return {"list_not_found", 400};
    case AppleBridgeError::Case::reminderNotFound:
        return {"reminder_not_found", 400};
    case AppleBridgeError::Case::operationNotSupported:
        return {"unsupported_operation", 400};
    case AppleBridgeError::Case::confirmationRequired:
        return {"confirmation_required", 400};
    case AppleBridgeError::Case::malformedRequest:
        return {"malformed_request", 400};
    case AppleBridgeError::Case::resourceAccessDenied:
        return {"resource_access_denied", 403};
    case AppleBridgeError::Case::resourceNotFound:
        return {"resource_not_found", 400};
    case AppleBridgeError::Case::capabilityUnavailable:
        return {"capability_unavailable", 400};
    case AppleBridgeError::Case::capabilityDenied:
        return {"capability_denied", 403};
    case AppleBridgeError::Case::unsafePath:
        return {"unsafe_path", 400};
    case AppleBridgeError::Case::operationFailed:
        return {"operation_failed", 400};
    case AppleBridgeError::Case::outcomeUnknown:
        return {"outcome_unknown", 400};
    case AppleBridgeError::Case::invalidDateRange:
        return {"invalid_date_range", 400};
    }
    return serverErrors::internalError;
}

std::string_view errorCode(const AppleBridgeError* error) {
    return error ? wireError(error->kind()).code : serverErrors::internalError.code;
}

int errorStatus(const AppleBridgeError* error) {
    return error ? wireError(error->kind()).status : serverErrors::internalError.status;
}

std::vector<WireError> everyWireError() {
    using namespace serverErrors;
    std::vector<WireError> errors{badRequest, invalidJSON,     pairingRequired, unauthorized,
                                  notFound,   requestTooLarge, encodingError,   internalError};
    for (int kind = 0; kind <= static_cast<int>(AppleBridgeError::lastCase); ++kind)
        errors.push_back(wireError(static_cast<AppleBridgeError::Case>(kind)));
    return errors;
}

} // namespace bridge
