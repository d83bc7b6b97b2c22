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

std::string token(int row, int column, int degrees) {
    const int columns = 360 / degrees;
    return fmt::format("{}.{}.{}", degrees, row, ((column % columns) + columns) % columns);
}

int indexOf(double angle, int degrees) {
    return static_cast<int>(std::floor(angle / degrees));
}

} // namespace

std::string cellAt(MapCoordinate place, int degrees) {
    return token(indexOf(place.latitude, degrees), indexOf(place.longitude, degrees), degrees);
}

std::vector<std::string> cellsAround(MapCoordinate center, double meters, int degrees) {
    // Near the poles a degree of longitude is next to nothing; nobody lives so near that a tenth would not do.
    constexpr double least = 0.1;
    const double latitudes = meters / metersInDegree;
    const double longitudes =
        std::min(179.0, latitudes / std::max(least, std::cos(radians(std::abs(center.latitude) + latitudes))));
    std::vector<std::string> cells;
    const int top = indexOf(std::min(90.0, center.latitude + latitudes), degrees);
    const int right = indexOf(center.longitude + longitudes, degrees);
    for (int row = indexOf(std::max(-90.0, center.latitude - latitudes), degrees); row <= top; ++row)
        for (int column = indexOf(center.longitude - longitudes, degrees); column <= right; ++column)
            cells.push_back(token(row, column, degrees));
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
