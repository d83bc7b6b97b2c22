#include "app/local_searches.h"

#include "adapters/gazetteer/gazetteer.h"
#include "adapters/nominatim/nominatim_search.h"
#include "app/build_info.h"
#include "app/helper_program.h"
#include "base/region.h"
#include "base/timer.h"

namespace bridge {

namespace {

Task<void> pauseOn(EventLoop& loop, std::chrono::milliseconds length) {
    co_await sleepFor(loop, length);
}

} // namespace

std::unique_ptr<LocalSearch> openLocalSearch(EventLoop& loop, HTTPClient& client, const Clock& clock,
                                             const std::optional<std::string>& placesServer) {
    if (!placesServer) return std::make_unique<Gazetteer>(loop, dataFile("places.db"));
    const auto version = BuildInfo().shortVersion();
    NominatimServer server{*placesServer, "BrindlefoxAppleBridge/" + version.value_or("0"), userLanguage()};
    const auto pause = [&loop](std::chrono::milliseconds length) { return pauseOn(loop, length); };
    return std::make_unique<NominatimSearch>(client, clock, pause, std::move(server));
}

} // namespace bridge
