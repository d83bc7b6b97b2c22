#include "adapters/valhalla/valhalla_directions.h"

#include "adapters/valhalla/route_answer.h"
#include "base/json_writer.h"
#include "base/platform_error.h"

#include <fmt/format.h>

namespace bridge {

namespace {

constexpr std::chrono::seconds patience{30};
constexpr int64_t mostAlternates = 2;

std::string_view costing(TransportType transport) {
    switch (transport) {
    case TransportType::automobile:
        return "auto";
    case TransportType::walking:
        return "pedestrian";
    case TransportType::transit:
        return "multimodal";
    case TransportType::cycling:
        return "bicycle";
    }
    return "";
}

// Valhalla knows a language by itself, and by a region only where it speaks it in two ways; any other region makes it
// speak English. Norwegian it knows as Bokmål.
std::string spokenAs(const std::string& language) {
    if (language == "pt-BR" || language == "en-GB") return language;
    const auto base = language.substr(0, language.find('-'));
    return base == "no" || base == "nn" ? "nb" : base;
}

void write(JSONWriter& json, const MapCoordinate& place) {
    json.beginObject();
    json.name("lat");
    json.number(place.latitude);
    json.name("lon");
    json.number(place.longitude);
    json.endObject();
}

} // namespace

ValhallaDirections::ValhallaDirections(HTTPClient& client, std::string server, const std::string& language)
    : m_client(client), m_server(std::move(server)), m_language(spokenAs(language)) {}

HTTPRequest ValhallaDirections::requestFor(const DirectionsQuery& query) const {
    JSONWriter json;
    json.beginObject();
    json.name("alternates");
    json.integer(query.alternates == AlternateRoutes::yes ? mostAlternates : 0);
    json.name("costing");
    json.string(costing(query.transport));
    json.name("directions_type");
    json.string("instructions");
    json.name("language");
    json.string(m_language);
    json.name("locations");
    json.beginArray();
    write(json, query.source);
    write(json, query.destination);
    json.endArray();
    json.name("units");
    json.string("kilometers");
    json.endObject();
    return {"POST", m_server + "/route", {{"Content-Type", "application/json"}}, json.take(), patience};
}

Task<std::vector<Route>> ValhallaDirections::calculate(DirectionsQuery query) {
    auto request = requestFor(query);
    HTTPResponse response;
    try {
        response = co_await m_client.send(std::move(request));
    } catch (const PlatformError& error) {
        throw PlatformError(fmt::format("The directions server could not be asked. {}", error.what()));
    }
    if (response.status != 200) throw PlatformError(valhalla::explain(response.status, response.body, query.transport));
    co_return valhalla::readRoutes(response.body, query.transport);
}

std::string ValhallaDirections::description() const {
    const auto host = m_server.substr(m_server.find("//") + 2);
    return fmt::format("Valhalla at {} (map © OpenStreetMap contributors, ODbL)", host.substr(0, host.find('/')));
}

} // namespace bridge
