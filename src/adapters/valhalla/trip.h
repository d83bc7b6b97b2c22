#pragma once

#include "base/record.h"

#include <optional>
#include <string>
#include <vector>

namespace bridge::valhalla {

// What we take from the answer of /route; its names are those of Valhalla.

struct Maneuver {
    std::optional<std::string> instruction;
    std::optional<std::vector<std::string>> streetNames;
    std::optional<std::string> travelMode;
    double length = 0; // in the trip's units
    static constexpr auto fields() {
        return std::tuple{optional("instruction", &Maneuver::instruction),
                          optional("street_names", &Maneuver::streetNames),
                          optional("travel_mode", &Maneuver::travelMode), required("length", &Maneuver::length)};
    }
};
static_assert(listsEveryMember<Maneuver>());

struct Leg {
    std::vector<Maneuver> maneuvers;
    static constexpr auto fields() { return std::tuple{required("maneuvers", &Leg::maneuvers)}; }
};
static_assert(listsEveryMember<Leg>());

struct Summary {
    double length = 0; // in the trip's units
    double time = 0;   // seconds
    static constexpr auto fields() {
        return std::tuple{required("length", &Summary::length), required("time", &Summary::time)};
    }
};
static_assert(listsEveryMember<Summary>());

struct Trip {
    std::vector<Leg> legs;
    Summary summary;
    std::string units;
    static constexpr auto fields() {
        return std::tuple{required("legs", &Trip::legs), required("summary", &Trip::summary),
                          required("units", &Trip::units)};
    }
};
static_assert(listsEveryMember<Trip>());

struct Alternate {
    Trip trip;
    static constexpr auto fields() { return std::tuple{required("trip", &Alternate::trip)}; }
};
static_assert(listsEveryMember<Alternate>());

struct Answer {
    Trip trip;
    std::optional<std::vector<Alternate>> alternates;
    static constexpr auto fields() {
        return std::tuple{required("trip", &Answer::trip), optional("alternates", &Answer::alternates)};
    }
};
static_assert(listsEveryMember<Answer>());

struct Failure {
    int64_t code = 0;
    std::optional<std::string> error;
    static constexpr auto fields() {
        return std::tuple{required("error_code", &Failure::code), optional("error", &Failure::error)};
    }
};
static_assert(listsEveryMember<Failure>());

} // namespace bridge::valhalla
