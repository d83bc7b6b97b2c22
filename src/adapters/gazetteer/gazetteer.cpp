#include "adapters/gazetteer/gazetteer.h"

#include "adapters/gazetteer/place_search.h"
#include "base/offload.h"
#include "base/platform_error.h"

#include <fmt/format.h>
#include <new>
#include <optional>

namespace bridge {

// Belongs to the worker.
struct Gazetteer::State {
    std::string path;
    std::optional<gazetteer::PlaceSearch> places;

    explicit State(std::string file) : path(std::move(file)) {}

    std::vector<MapItem> find(const LocalSearchQuery& query) {
        try {
            if (!places) places.emplace(path);
            return places->find(query);
        } catch (const std::runtime_error& error) {
            // A whole one may be there the next time.
            places.reset();
            throw PlatformError(fmt::format(
                "The file of places can't be used ({}: {}). Install Brindlefox Apple Bridge anew, or build it again "
                "after tools/fetch-npm build, or let it ask a Nominatim server.",
                path, error.what()));
        }
    }
};

Gazetteer::Gazetteer(EventLoop& loop, std::string path)
    : m_loop(loop), m_state(std::make_shared<State>(std::move(path))) {}

Gazetteer::~Gazetteer() = default;

Task<std::vector<MapItem>> Gazetteer::search(LocalSearchQuery query) {
    auto job = offload(m_loop, m_worker, [state = m_state, query] { return state->find(query); });
    auto items = co_await job;
    co_return items;
}

std::string Gazetteer::description() const {
    return "towns and villages on this computer (data by GeoNames, CC BY 4.0)";
}

} // namespace bridge
