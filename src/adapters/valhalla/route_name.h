#pragma once

#include "adapters/valhalla/trip.h"

#include <string>

namespace bridge::valhalla {

// The one or two streets that most of the way is on, in the order they are come to: "Landstrasse – Feldkircherstrasse".
// Empty when no street on the way has a name.
std::string nameOf(const Trip& trip);

} // namespace bridge::valhalla
