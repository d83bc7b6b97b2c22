#pragma once

#include "base/date.h"
#include "base/event_loop.h"
#include "platform/http_client.h"
#include "tour_steps.h"

#include <map>
#include <string>

namespace bridge::playground {

// Why this machine can't serve what a step needs, in a sentence for the user.
using Missing = std::map<Needs, std::string>;

// Calls every operation of the bridge over HTTP, as a client would, and prints what came back. True when each answered
// as it should, which is with an error where this machine lacks what the step needs. `rootID` names the folder with the
// sample documents; the calendars are those of the days after `now`.
Task<bool> tour(HTTPClient& client, std::string credential, std::string rootID, Date now, Missing missing);

} // namespace bridge::playground
