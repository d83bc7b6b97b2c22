#include "adapters/nominatim/nominatim_search.h"

#include "adapters/nominatim/nominatim_answer.h"
#include "adapters/nominatim/nominatim_request.h"
#include "base/platform_error.h"

#include <exception>
#include <fmt/format.h>
#include <optional>

namespace bridge {

namespace {

// The most that public servers allow.
constexpr std::chrono::seconds betweenRequests{1};

} // namespace

NominatimSearch::NominatimSearch(HTTPClient& client, const Clock& clock, Pause pause, NominatimServer server)
    : m_client(client), m_clock(clock), m_pause(std::move(pause)), m_server(std::move(server)) {}

Task<std::vector<MapItem>> NominatimSearch::search(LocalSearchQuery query) {
    auto request = nominatim::searchRequest(m_server, query);
    const auto guard = co_await m_turns.lock();
    co_await turn();
    std::optional<HTTPResponse> response;
    try {
        response = co_await m_client.send(std::move(request));
    } catch (const PlatformError& error) {
        throw PlatformError(fmt::format("The places server {} gave no answer: {}", m_server.url, error.what()));
    }
    co_return nominatim::placesIn(*response, m_server.url);
}

// Ends when a request may leave. Whoever is dropped while waiting takes no turn from those behind.
Task<void> NominatimSearch::turn() {
    // A pause may end a little early by the clock that counts here.
    for (auto wait = m_nextTurn - m_clock.uptime(); wait.count() > 0; wait = m_nextTurn - m_clock.uptime())
        co_await m_pause(wait);
    m_nextTurn = m_clock.uptime() + betweenRequests;
}

std::string NominatimSearch::description() const {
    return fmt::format("the server {} (data by OpenStreetMap contributors, ODbL)", m_server.url);
}

} // namespace bridge
