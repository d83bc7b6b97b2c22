#include "adapters/valhalla/route_name.h"

#include "base/text.h"

#include <algorithm>

namespace bridge::valhalla {

namespace {

// A second street belongs to the name from this part of the first one's length on.
constexpr double worthNaming = 0.25;

struct Street {
    std::string name;
    double length = 0;
};

// A street with several names counts by its first, which is the one on its signs; the rest are numbers of roads.
std::string firstName(const Maneuver& maneuver) {
    if (maneuver.streetNames)
        for (const auto& name : *maneuver.streetNames)
            if (const auto trimmed = trim(name); !trimmed.empty()) return std::string(trimmed);
    return {};
}

std::vector<Street> streetsOf(const Trip& trip) {
    std::vector<Street> streets;
    for (const auto& leg : trip.legs)
        for (const auto& maneuver : leg.maneuvers) {
            const auto name = firstName(maneuver);
            if (name.empty()) continue;
            const auto known =
                std::find_if(streets.begin(), streets.end(), [&](const Street& street) { return street.name == name; });
            if (known == streets.end())
                streets.push_back({name, maneuver.length});
            else
                known->length += maneuver.length;
        }
    return streets;
}

} // namespace

std::string nameOf(const Trip& trip) {
    const auto streets = streetsOf(trip);
    if (streets.empty()) return {};
    const auto shorter = [](const Street& left, const Street& right) { return left.length < right.length; };
    const auto longest = std::max_element(streets.begin(), streets.end(), shorter);
    const Street* second = nullptr;
    for (const auto& street : streets)
        if (&street != &*longest && (!second || shorter(*second, street))) second = &street;
    if (!second || second->length <= longest->length * worthNaming) return longest->name;
    const bool inOrder = &*longest < second;
    const auto& first = inOrder ? *longest : *second;
    const auto& last = inOrder ? *second : *longest;
    return first.name + " – " + last.name;
}

} // namespace bridge::valhalla
