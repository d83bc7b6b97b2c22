#include "adapters/nominatim/nominatim_request.h"

#include "adapters/nominatim/web_address.h"
#include "base/platform_error.h"

#include <algorithm>
#include <cmath>
#include <fmt/format.h>
#include <numbers>

namespace bridge::nominatim {

namespace {

constexpr std::chrono::seconds timeout{10};
constexpr int mostItems = 25;

std::string escaped(std::string_view text) {
    constexpr std::string_view plain = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-._~";
    std::string result;
    for (const char byte : text)
        if (plain.find(byte) != plain.npos)
            result += byte;
        else
            result += fmt::format("%{:02X}", static_cast<unsigned char>(byte));
    return result;
}

// West, south, east, north. It ends at the poles and at the date line.
std::string viewbox(const MapRegion& region) {
    constexpr double metersInDegree = 111'320;
    constexpr double least = 0.01;
    const auto [latitude, longitude] = region.center;
    const double north = region.latitudinalMeters / 2 / metersInDegree;
    const double shrunk = std::max(least, std::cos(latitude * std::numbers::pi / 180));
    const double east = region.longitudinalMeters / 2 / metersInDegree / shrunk;
    return fmt::format("{:.6f},{:.6f},{:.6f},{:.6f}", std::max(-180.0, longitude - east),
                       std::max(-90.0, latitude - north), std::min(180.0, longitude + east),
                       std::min(90.0, latitude + north));
}

} // namespace

HTTPRequest searchRequest(const NominatimServer& server, const LocalSearchQuery& query) {
    std::string base = server.url;
    if (!isWebAddress(base) || base.find_first_of("?#@") != base.npos)
        throw PlatformError(fmt::format("The address of the places server is none: \"{}\". It begins with https:// or "
                                        "http:// and has no question mark.",
                                        base));
    while (base.ends_with('/'))
        base.pop_back();
    HTTPRequest request;
    request.method = "GET";
    request.url = fmt::format("{}/search?format=jsonv2&addressdetails=1&extratags=1&limit={}&q={}", base, mostItems,
                              escaped(query.naturalLanguageQuery));
    if (query.region) request.url += fmt::format("&viewbox={}&bounded=0", viewbox(*query.region));
    request.headers = {
        {"User-Agent", server.userAgent}, {"Accept", "application/json"}, {"Accept-Language", server.language}};
    request.timeout = timeout;
    return request;
}

} // namespace bridge::nominatim
