#include "app/location_managers.h"

#include "adapters/jsonfile/service_settings.h"
#include "adapters/location/consented_location_manager.h"
#include "adapters/location/fixed_place.h"
#include "base/log.h"
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

std::unique_ptr<LocationSource> placeIn(const ServiceSettings& settings, const Platform& platform,
                                        const std::string& settingsFile) {
    return std::make_unique<FixedPlace>(settings.location, settingsFile, settings.faultOf("location"), *platform.clock);
}

} // namespace

std::unique_ptr<LocationManager> openFixedLocation(EventLoop& loop, const Platform& platform,
                                                   const std::string& settingsFile) {
    return managerOf(loop, platform, placeIn(readServiceSettings(settingsFile), platform, settingsFile));
}

std::unique_ptr<LocationManager> openUsersLocation(EventLoop& loop, const Platform& platform,
                                                   const std::string& settingsFile) {
    const auto settings = readServiceSettings(settingsFile);
    if (!settings.location) {
        if (auto geoclue = openGeoClue(loop)) {
            log::note("The location is what GeoClue finds.");
            return managerOf(loop, platform, std::move(geoclue));
        }
    }
    log::note(settings.location ? "The location is the one that " + settingsFile + " says."
                                : "Nothing finds the location here, and " + settingsFile + " says none.");
    return managerOf(loop, platform, placeIn(settings, platform, settingsFile));
}

} // namespace bridge
