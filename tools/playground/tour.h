#pragma once

#include "base/event_loop.h"
#include "platform/http_client.h"

#include <string>

namespace bridge::playground {

// Calls every operation of the bridge over HTTP, as a client would, and prints what came back. True when each answered
// as it should. `rootID` names the folder with the sample documents.
Task<bool> tour(HTTPClient& client, std::string credential, std::string rootID);

} // namespace bridge::playground
