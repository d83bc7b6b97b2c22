#include "adapters/location/fixed_place.h"
#include "adapters/posix/system_clock.h"
#include "tests/adapters/location/consented_site.h"
#include "tests/fakes/scripted_location_manager.h"

namespace bridge {
namespace {

class FixedSite : public ConsentedSite {
    std::unique_ptr<LocationSource> makeSource(EventLoop&) override {
        std::optional<MapCoordinate> coordinate;
        if (place) coordinate = {place->latitude, place->longitude};
        return std::make_unique<FixedPlace>(coordinate, "services.json", "", m_clock);
    }
    SystemClock m_clock;
};

// The fake does by itself nothing at all, so the site does for it what a platform would.
class ScriptedSite : public LocationManagerSite {
public:
    std::unique_ptr<LocationManager> start(EventLoop&) override {
        auto manager = std::make_unique<ScriptedLocationManager>();
        manager->status = status;
        m_manager = manager.get();
        m_answered = 0;
        return manager;
    }
    void turn(EventLoop&) override {
        if (m_manager->isLooking) {
            if (place)
                m_manager->update({*place});
            else
                m_manager->fail("There is no signal.");
        } else if (m_manager->accessRequests > m_answered) {
            ++m_answered;
            if (user == User::cannotBeAsked)
                m_manager->failToAsk("There is nobody to ask.");
            else
                m_manager->changeStatus(user == User::allows ? 3 : 2);
        }
    }

private:
    ScriptedLocationManager* m_manager = nullptr;
    int m_answered = 0;
};

const LocationManagerKind fixed{"FixedPlace", [] { return std::make_unique<FixedSite>(); }};
const LocationManagerKind scripted{"Scripted", [] { return std::make_unique<ScriptedSite>(); }};
INSTANTIATE_TEST_SUITE_P(Adapters, LocationManagerContract, testing::Values(fixed, scripted), nameOf);

} // namespace
} // namespace bridge
