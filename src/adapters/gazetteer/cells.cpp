#include "adapters/gazetteer/cells.h"

#include <algorithm>
#include <cmath>
#include <fmt/format.h>
#include <numbers>

namespace bridge::gazetteer {

namespace {

constexpr double metersInDegree = 111'320;

double radians(double degrees) {
    return degrees * std::numbers::pi / 180;
}

std::string token(int row, int column) {
    constexpr int columns = 360;
    return fmt::format("{}.{}", row, ((column % columns) + columns) % columns);
}

int indexOf(double degrees) {
    return static_cast<int>(std::floor(degrees));
}

} // namespace

std::string cellAt(MapCoordinate place) {
    return token(indexOf(place.latitude), indexOf(place.longitude));
}

std::vector<std::string> cellsAround(MapCoordinate center, double meters) {
    // Near the poles a degree of longitude is next to nothing; nobody lives so near that a tenth would not do.
    constexpr double least = 0.1;
    const double latitudes = meters / metersInDegree;
    const double longitudes =
        std::min(179.0, latitudes / std::max(least, std::cos(radians(std::abs(center.latitude) + latitudes))));
    std::vector<std::string> cells;
    const int top = indexOf(std::min(90.0, center.latitude + latitudes));
    const int right = indexOf(center.longitude + longitudes);
    for (int row = indexOf(std::max(-90.0, center.latitude - latitudes)); row <= top; ++row)
        for (int column = indexOf(center.longitude - longitudes); column <= right; ++column)
            cells.push_back(token(row, column));
    return cells;
}

double kilometersBetween(MapCoordinate left, MapCoordinate right) {
    constexpr double radius = 6371;
    const double north = std::sin(radians(right.latitude - left.latitude) / 2);
    const double east = std::sin(radians(right.longitude - left.longitude) / 2);
    const double chord =
        north * north + std::cos(radians(left.latitude)) * std::cos(radians(right.latitude)) * east * east;
    return 2 * radius * std::asin(std::min(1.0, std::sqrt(chord)));
}

} // namespace bridge::gazetteer
