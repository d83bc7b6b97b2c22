#pragma once

#include "base/date.h"
#include "base/event_loop.h"
#include "platform/http_client.h"

#include <string>

namespace bridge::playground {

// Calls every operation of the bridge over HTTP, as a client would, and prints what came back. True when each answered
// as it should. `rootID` names the folder with the sample documents; the calendars are those of
// the days after `now`.
Task<bool> tour(HTTPClient& client, std::string credential, std::string rootID, Date now);

} // namespace bridge::playground
