#pragma once

#include "base/apple_bridge_error.h"

#include <string_view>
#include <vector>

namespace bridge {

// What a client reads in `error.code`, and the HTTP status that it comes with.
struct WireError {
    std::string_view code;
    int status;
};

// The server's own. All others are AppleBridgeError's.
namespace serverErrors {
constexpr WireError badRequest{"bad_request", 400};
constexpr WireError invalidJSON{"invalid_json", 400};
constexpr WireError pairingRequired{"pairing_required", 401};
constexpr WireError unauthorized{"unauthorized", 401};
constexpr WireError notFound{"not_found", 404};
constexpr WireError requestTooLarge{"request_too_large", 413};
constexpr WireError encodingError{"encoding_error", 500};
constexpr WireError internalError{"internal_error", 500};
} // namespace serverErrors

WireError wireError(AppleBridgeError::Case kind);

// What an error becomes on the wire; the one place where that is settled. An error that is not the bridge's own has
// none here and is "internal_error", 500.
std::string_view errorCode(const AppleBridgeError* error);
int errorStatus(const AppleBridgeError* error);

// Every error that there is, the server's own first.
std::vector<WireError> everyWireError();

} // namespace bridge
