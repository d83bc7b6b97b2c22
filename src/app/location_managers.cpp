#include "app/location_managers.h"

#include "adapters/location/consented_location_manager.h"
#include "adapters/location/fixed_place.h"
#ifdef HAVE_GEOCLUE
#include "adapters/geoclue/geoclue_source.h"
#endif

namespace bridge {

namespace {

std::unique_ptr<LocationSource> openGeoClue([[maybe_unused]] EventLoop& loop) {
#ifdef HAVE_GEOCLUE
    return loop.runUntilDone(GeoClueSource::open(loop, {}));
#else
    return nullptr;
#endif
}

std::unique_ptr<LocationManager> managerOf(EventLoop& loop, const Platform& platform,
                                           std::unique_ptr<LocationSource> source) {
    return std::make_unique<ConsentedLocationManager>(loop, *platform.authorization, std::move(source));
}

std::unique_ptr<LocationSource> placeIn(const UsersServices& services, const Platform& platform) {
    const auto& settings = services.settings;
    return std::make_unique<FixedPlace>(settings.location, services.file, settings.faultOf("location"),
                                        *platform.clock);
}

} // namespace

std::unique_ptr<LocationManager> openFixedLocation(EventLoop& loop, const Platform& platform,
                                                   const UsersServices& services) {
    return managerOf(loop, platform, placeIn(services, platform));
}

std::unique_ptr<LocationManager> openUsersLocation(EventLoop& loop, const Platform& platform,
                                                   const UsersServices& services) {
    if (!services.settings.location)
        if (auto geoclue = openGeoClue(loop)) return managerOf(loop, platform, std::move(geoclue));
    return openFixedLocation(loop, platform, services);
}

} // namespace bridge
