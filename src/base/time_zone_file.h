#pragma once

#include "base/time_zone.h"

#include <string>

namespace bridge {

// Whether it can be the name of a zone at all, and no path to somewhere else.
bool isTimeZoneName(std::string_view name);

// From the system's files (RFC 9636), which the system keeps up to date. Libraries carry copies that are years behind
// (ICU 72 still changes the clocks of Mexico and not yet those of Cairo), or read these files wrongly (libical 3 one
// zone in four). Only where the system has none ICU's copy has to do. Nothing when there is no such zone.
std::shared_ptr<const TimeZone> readTimeZone(const std::string& name);

// The content of such a file; nothing when it is none.
std::shared_ptr<const TimeZone> parseTimeZoneFile(std::string_view content);

} // namespace bridge
