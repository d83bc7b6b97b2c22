#include "adapters/location/consented_location_manager.h"

namespace bridge {

namespace {

constexpr int authorizedAlways = 3;

} // namespace

ConsentedLocationManager::ConsentedLocationManager(EventLoop& loop, Authorization& authorization,
                                                   std::unique_ptr<LocationSource> source)
    : m_loop(loop), m_authorization(authorization), m_source(std::move(source)) {}

ConsentedLocationManager::~ConsentedLocationManager() = default;

std::optional<int> ConsentedLocationManager::authorizationStatus() const {
    return m_authorization.status(PrivacyService::location);
}

void ConsentedLocationManager::requestWhenInUseAuthorization() {
    if (!m_asking.done()) return;
    m_asking = ask();
    m_asking.start();
}

Task<> ConsentedLocationManager::ask() {
    Words words = [](LocationManagerDelegate& delegate) { delegate.authorizationChanged(); };
    try {
        auto asking = m_authorization.requestAccess(PrivacyService::location);
        co_await std::move(asking);
    } catch (...) {
        words = [error = std::current_exception()](LocationManagerDelegate& delegate) {
            delegate.authorizationRequestFailed(error);
        };
    }
    say(std::move(words));
}

void ConsentedLocationManager::requestLocation() {
    stopUpdatingLocation();
    m_locating = locate(m_request);
    m_locating.start();
}

void ConsentedLocationManager::stopUpdatingLocation() {
    ++m_request;
    m_locating = {};
}

Task<> ConsentedLocationManager::locate(uint64_t request) {
    Words words;
    try {
        auto finding = fix();
        const auto found = co_await std::move(finding);
        words = [found](LocationManagerDelegate& delegate) { delegate.locationsUpdated({found}); };
    } catch (...) {
        words = [error = std::current_exception()](LocationManagerDelegate& delegate) {
            delegate.requestFailed(error);
        };
    }
    sayOf(request, std::move(words));
}

// Throws before anything is looked for.
Task<LocationFix> ConsentedLocationManager::fix() {
    if (authorizationStatus() != authorizedAlways)
        throw PlatformError("The user has not allowed Brindlefox Apple Bridge to know the location.");
    return m_source->locate();
}

// At a later turn: whoever hears it may ask again at once, and that ends the task which says it.
void ConsentedLocationManager::say(Words words) {
    m_loop.post([this, life = std::weak_ptr(m_life), words = std::move(words)] {
        if (!life.expired() && m_delegate) words(*m_delegate);
    });
}

void ConsentedLocationManager::sayOf(uint64_t request, Words words) {
    say([this, request, words = std::move(words)](LocationManagerDelegate& delegate) {
        if (request == m_request) words(delegate);
    });
}

} // namespace bridge
