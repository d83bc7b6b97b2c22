#pragma once

#include "adapters/applescript/datum.h"

#include <string>

namespace bridge::applescript {

// As it would stand in a script, cut off where it gets long: for messages.
std::string describe(const Datum& datum);

} // namespace bridge::applescript
