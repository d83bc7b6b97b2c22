#pragma once

#include "adapters/location/location_source.h"
#include "base/event_loop.h"
#include "base/worker.h"

#include <chrono>
#include <memory>

namespace bridge {

// The desktop's own location service, GeoClue. The user knows us there by the name of our desktop file. A fix that is
// coarser than a hundred metres is given when no better one followed in `settling`.
class GeoClueSource : public LocationSource {
public:
    struct Patience {
        std::chrono::milliseconds opening{2'000}; // for the bus to say whether there is a GeoClue
        std::chrono::milliseconds settling{3'000};
    };

    // Nothing where the system bus has none and would not start any. The loop outlives the source.
    static Task<std::unique_ptr<LocationSource>> open(EventLoop& loop, Patience patience);

    // No patience of its own: what GeoClue does not answer waits until it is dropped.
    Task<LocationFix> locate() override;
    std::string description() const override { return "GeoClue"; }

private:
    GeoClueSource(EventLoop& loop, Patience patience) : m_loop(loop), m_patience(patience) {}
    Task<bool> isServed();

    EventLoop& m_loop;
    Patience m_patience;
    Worker m_worker;
};

} // namespace bridge
