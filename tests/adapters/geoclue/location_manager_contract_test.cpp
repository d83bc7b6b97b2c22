#include "adapters/geoclue/geoclue_source.h"
#include "tests/adapters/geoclue/private_system_bus.h"
#include "tests/adapters/geoclue/scripted_geoclue.h"
#include "tests/adapters/location/consented_site.h"

namespace bridge {
namespace {

class GeoClueSite : public ConsentedSite {
public:
    std::string hindrance() const override { return PrivateBus::isPossible() ? "" : "dbus-daemon is not installed"; }

private:
    std::unique_ptr<LocationSource> makeSource(EventLoop& loop) override {
        ScriptedGeoClue::Plan plan;
        if (place)
            plan.places = {{.latitude = place->latitude, .longitude = place->longitude}};
        else
            plan.start = ScriptedGeoClue::Answer::refusal;
        m_geoclue.reset();
        m_geoclue.emplace(std::move(plan));
        return loop.runUntilDone(GeoClueSource::open(loop, {}));
    }

    std::optional<ScriptedGeoClue> m_geoclue;
};

const LocationManagerKind geoclue{"GeoClue", [] { return std::make_unique<GeoClueSite>(); }};
INSTANTIATE_TEST_SUITE_P(Adapters, LocationManagerContract, testing::Values(geoclue), nameOf);

} // namespace
} // namespace bridge
