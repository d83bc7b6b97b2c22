#pragma once

#include "platform/local_search.h"

namespace bridge {

// "52.52,13.405,Central Station": where it is, in the shortest decimals that read back as the same numbers, and its own
// name. It is the same for the same place, as long as the platform moves and renames nothing.
std::string placeID(const MapItem& item);

} // namespace bridge
