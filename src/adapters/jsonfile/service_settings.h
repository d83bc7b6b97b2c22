#pragma once

#include "platform/local_search.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace bridge {

// Which services the user wants used, as a file of the user's says it:
//
//     {"location": {"latitude": 47.14, "longitude": 9.52},
//      "placesServer": "https://nominatim.example.org",
//      "directionsServer": "http://127.0.0.1:8002"}
//
// Every key may be absent or null, and then that service is not set. An address has no slash at its end here.
struct ServiceSettings {
    std::optional<MapCoordinate> location;
    std::optional<std::string> placesServer;
    std::optional<std::string> directionsServer;

    // What the file says and we can't use, by its key, in a sentence for the user that begins with the place in the
    // file: "services.json, .location.latitude: expected a number from -90 to 90". A fault of the whole file stands
    // under "". What has a fault counts as not set; the other settings hold.
    std::map<std::string, std::string, std::less<>> faults;

    // What is wrong with this setting, or with the file that might hold it; empty when nothing is.
    std::string faultOf(std::string_view key) const;
};

// Never throws: a file that is absent sets nothing, one that is damaged or can't be read sets nothing and has a fault.
ServiceSettings readServiceSettings(const std::string& path);

} // namespace bridge
