#include "adapters/valhalla/route_answer.h"

#include "adapters/valhalla/route_name.h"
#include "adapters/valhalla/trip.h"
#include "base/platform_error.h"
#include "base/text.h"

#include <algorithm>
#include <cmath>
#include <fmt/format.h>

namespace bridge::valhalla {

namespace {

constexpr const char* noRide = "No ride by public transport was found. The directions server may have no timetables "
                               "for these places.";

double metresIn(const std::string& unit) {
    if (unit == "kilometers") return 1000;
    if (unit == "miles") return 1609.344;
    throw DecodingError(".trip.units: expected kilometers or miles");
}

Route routeOf(Trip trip) {
    // Longer and later than any way on Earth.
    constexpr double most = 1e9;
    const auto isPlausible = [](double number) { return number >= 0 && number < most; };
    if (!isPlausible(trip.summary.length) || !isPlausible(trip.summary.time))
        throw DecodingError(".trip.summary: expected a length and a time of a way");
    Route route;
    route.name = nameOf(trip);
    // The server counts thousandths; what a double adds behind them is noise.
    route.distance = std::round(trip.summary.length * metresIn(trip.units) * 1000) / 1000;
    route.expectedTravelTime = trip.summary.time;
    for (auto& leg : trip.legs)
        for (auto& maneuver : leg.maneuvers)
            route.steps.push_back(std::move(maneuver.instruction).value_or(""));
    return route;
}

bool hasRide(const Trip& trip) {
    const auto isRide = [](const Maneuver& maneuver) { return maneuver.travelMode == "transit"; };
    return std::any_of(trip.legs.begin(), trip.legs.end(),
                       [&](const Leg& leg) { return std::any_of(leg.maneuvers.begin(), leg.maneuvers.end(), isRide); });
}

std::optional<Failure> failureIn(std::string_view body) {
    try {
        return decode<Failure>(parseJSON(body));
    } catch (const std::runtime_error&) {
        return std::nullopt; // a page of whatever stands before the server
    }
}

// The server's own words, as far as they can be shown.
std::string shown(std::string_view text) {
    constexpr size_t longest = 200;
    auto words = repairUTF8(text.substr(0, longest));
    std::replace_if(
        words.begin(), words.end(), [](unsigned char each) { return each < ' ' || each == 0x7f; }, ' ');
    return words;
}

const char* means(TransportType transport) {
    switch (transport) {
    case TransportType::automobile:
        return "by car";
    case TransportType::walking:
        return "on foot";
    case TransportType::transit:
        return "by public transport";
    case TransportType::cycling:
        return "by bicycle";
    }
    return "";
}

// The numbers are those of Valhalla's own errors.
std::string explain(const Failure& failure, TransportType transport) {
    switch (failure.code) {
    case 154:
    case 155:
        return fmt::format("The places are farther apart than the directions server goes {}.", means(transport));
    case 170:
    case 171:
    case 440:
    case 441:
    case 442:
        if (transport == TransportType::transit) return noRide;
        if (failure.code == 171)
            return fmt::format("One of the places is near no road that can be taken {}, or not on the directions "
                               "server's map.",
                               means(transport));
        return fmt::format("There is no way {} between these places.", means(transport));
    case 124:
    case 125:
        return fmt::format("The directions server knows no ways {}.", means(transport));
    default:
        return fmt::format("The directions server refused: {} (error {})", shown(failure.error.value_or("no reason")),
                           failure.code);
    }
}

} // namespace

std::vector<Route> readRoutes(std::string_view body, TransportType transport) {
    std::vector<Route> routes;
    try {
        auto answer = decode<Answer>(parseJSON(body));
        if (transport == TransportType::transit && !hasRide(answer.trip)) throw PlatformError(noRide);
        routes.push_back(routeOf(std::move(answer.trip)));
        if (answer.alternates)
            for (auto& alternate : *answer.alternates)
                routes.push_back(routeOf(std::move(alternate.trip)));
    } catch (const JSONError& fault) {
        throw PlatformError(fmt::format("The directions server's answer is not Valhalla's: {}", fault.what()));
    } catch (const DecodingError& fault) {
        throw PlatformError(fmt::format("The directions server's answer is not Valhalla's: {}", fault.what()));
    }
    return routes;
}

std::string explain(int status, std::string_view body, TransportType transport) {
    if (const auto failure = failureIn(body)) return explain(*failure, transport);
    if (status == 401 || status == 403) return "The directions server doesn't let us in: it may ask for a key.";
    if (status == 429) return "The directions server was asked too often; try again later.";
    if (status >= 500) return fmt::format("The directions server is out of order (HTTP status {}).", status);
    return fmt::format("What answers as the directions server is no Valhalla (HTTP status {}). Look at "
                       "\"directionsServer\" in services.json.",
                       status);
}

} // namespace bridge::valhalla
