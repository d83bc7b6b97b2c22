#include "bridges/location/place_id.h"

#include <charconv>
#include <cmath>

namespace bridge {

namespace {

// A whole number keeps one zero behind its point, and what is all but nothing is written with an exponent: 13.0, 1e-05.
std::string decimals(double number) {
    constexpr double smallestWithoutExponent = 1e-4;
    const bool isTiny = number != 0 && std::abs(number) < smallestWithoutExponent;
    char digits[512]; // fits the largest double
    const auto format = isTiny ? std::chars_format::scientific : std::chars_format::fixed;
    std::string text(digits, std::to_chars(digits, digits + sizeof digits, number, format).ptr);
    if (std::isfinite(number) && text.find_first_of(".e") == std::string::npos) text += ".0";
    return text;
}

} // namespace

std::string placeID(const MapItem& item) {
    return decimals(item.coordinate.latitude) + "," + decimals(item.coordinate.longitude) + "," +
           item.name.value_or("");
}

} // namespace bridge
