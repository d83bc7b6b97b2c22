#pragma once

#include "platform/local_search.h"

#include <string>
#include <vector>

namespace bridge::gazetteer {

// The world cut into cells of one degree of latitude and longitude, each with a token of its own.
std::string cellAt(MapCoordinate place);

// Whatever is within so many meters of the point, north to south and east to west, is in one of them. Also across the
// date line.
std::vector<std::string> cellsAround(MapCoordinate center, double meters);

double kilometersBetween(MapCoordinate left, MapCoordinate right);

} // namespace bridge::gazetteer
