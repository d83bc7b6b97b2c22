#pragma once

#include "base/async_mutex.h"
#include "platform/clock.h"
#include "platform/http_client.h"
#include "platform/local_search.h"

#include <chrono>
#include <functional>

namespace bridge {

struct NominatimServer {
    std::string url;       // absolute, http or https; it may have a path: "https://nominatim.example.org/maps"
    std::string userAgent; // says who asks, as the rules of public servers want it
    std::string language;  // what the user would like to read: "de-AT"
};

// Any server that speaks Nominatim's interface: addresses, shops and sights of OpenStreetMap, with phones and web
// addresses. The server is told what is looked for, and around where. No more than one request a second leaves for it,
// and none before the one before it was answered; who comes sooner waits for a turn, and is given one in the order of
// coming.
class NominatimSearch : public LocalSearch {
public:
    // Ends after that time; a dropped one is not missed.
    using Pause = std::function<Task<void>(std::chrono::milliseconds)>;

    // The client and the clock must outlive it, and it its tasks.
    NominatimSearch(HTTPClient& client, const Clock& clock, Pause pause, NominatimServer server);

    Task<std::vector<MapItem>> search(LocalSearchQuery query) override;
    std::string description() const override;

private:
    Task<void> turn();

    HTTPClient& m_client;
    const Clock& m_clock;
    Pause m_pause;
    NominatimServer m_server;
    AsyncMutex m_turns;
    std::chrono::milliseconds m_nextTurn{0};
};

} // namespace bridge
