#include "bridges/location/location_data_bridge.h"

#include "base/apple_bridge_error.h"
#include "base/uuid.h"
#include "platform/privacy_service_names.h"

namespace bridge {

namespace {

constexpr std::chrono::seconds locationTimeout{15};

// As the platform numbers them.
constexpr int notDetermined = 0;
constexpr int authorizedAlways = 3;

std::exception_ptr failure(std::string_view detail) {
    return std::make_exception_ptr(AppleBridgeError::operationFailed(detail));
}

} // namespace

// Held by a waiting task: when it goes, nothing of its request is left.
template <typename Waited> class LocationDataBridge::Withdrawal {
public:
    Withdrawal(const Self& self, Waited waited) : m_self(self), m_waited(std::move(waited)) {}
    Withdrawal(const Withdrawal&) = delete;
    Withdrawal& operator=(const Withdrawal&) = delete;
    ~Withdrawal() {
        if (const auto self = m_self.lock()) (*self)->withdraw(m_waited);
    }

private:
    std::weak_ptr<LocationDataBridge*> m_self;
    Waited m_waited;
};

LocationDataBridge::LocationDataBridge(LocationManager& manager, LocalSearch& localSearch, Directions& directions,
                                       AlarmClock& alarms)
    : m_manager(manager), m_localSearch(localSearch), m_directions(directions), m_alarms(alarms) {
    m_manager.setDelegate(this);
}

LocationDataBridge::~LocationDataBridge() {
    m_manager.setDelegate(nullptr);
    m_manager.stopUpdatingLocation();
}

BridgePermissionState LocationDataBridge::locationPermission() const {
    const auto status = m_manager.authorizationStatus();
    return status ? mapLocationStatus(*status) : BridgePermissionState::unavailable;
}

Task<BridgePermissionState> LocationDataBridge::requestLocationAccess() {
    const auto continuation = std::make_shared<Continuation<BridgePermissionState>>();
    const Withdrawal withdrawal(m_self, continuation);
    startAccessRequest(continuation);
    const auto state = co_await continuation->answer();
    co_return state;
}

void LocationDataBridge::startAccessRequest(AccessContinuation continuation) {
    const auto older = std::exchange(m_accessContinuation, std::move(continuation));
    m_manager.requestWhenInUseAuthorization();
    // Last: the older task goes on inside this call and may come back here.
    if (older) older->fail(failure("A newer location permission request replaced this one."));
}

void LocationDataBridge::authorizationChanged() {
    if (m_manager.authorizationStatus() == notDetermined) return;
    if (const auto waiting = std::exchange(m_accessContinuation, nullptr)) waiting->resume(locationPermission());
}

void LocationDataBridge::authorizationRequestFailed(std::exception_ptr error) {
    if (const auto waiting = std::exchange(m_accessContinuation, nullptr)) waiting->fail(std::move(error));
}

void LocationDataBridge::withdraw(const AccessContinuation& continuation) {
    if (m_accessContinuation == continuation) m_accessContinuation = nullptr;
}

Task<LocationDescriptor> LocationDataBridge::currentLocation() {
    if (m_manager.authorizationStatus() != authorizedAlways)
        throw AppleBridgeError::permissionDenied(titleOf(PrivacyService::location));
    const auto continuation = std::make_shared<Continuation<LocationFix>>();
    const Withdrawal withdrawal(m_self, continuation);
    startLocationRequest(continuation);
    const auto fix = co_await continuation->answer();
    co_return LocationDescriptor{fix.latitude, fix.longitude, fix.horizontalAccuracy, fix.altitude, fix.timestamp};
}

void LocationDataBridge::startLocationRequest(LocationContinuation continuation) {
    const auto older = endLocationRequest();
    m_locationContinuation = std::move(continuation);
    m_locationRequestID = makeUUID();
    m_manager.requestLocation();
    m_locationTimeoutTask = startTimeout(*m_locationRequestID);
    // Last: the older task goes on inside this call and may come back here.
    if (older) older->fail(failure("A newer location request replaced this one."));
}

std::unique_ptr<PendingAlarm> LocationDataBridge::startTimeout(std::string requestID) {
    return m_alarms.set(locationTimeout, [weakly = std::weak_ptr(m_self), requestID = std::move(requestID)] {
        if (const auto self = weakly.lock()) (*self)->locationTimedOut(requestID);
    });
}

void LocationDataBridge::locationTimedOut(const std::string& requestID) {
    // An alarm that was on its way when its request was replaced is none for the newer one.
    if (m_locationRequestID != requestID) return;
    const auto waiting = endLocationRequest();
    // Nobody would hear of it any more.
    m_manager.stopUpdatingLocation();
    if (waiting) waiting->fail(failure("Location did not respond within 15 seconds."));
}

void LocationDataBridge::locationsUpdated(std::vector<LocationFix> fixes) {
    if (fixes.empty()) return;
    if (const auto waiting = endLocationRequest()) waiting->resume(fixes.back());
}

void LocationDataBridge::requestFailed(std::exception_ptr error) {
    if (const auto waiting = endLocationRequest()) waiting->fail(std::move(error));
}

// Nothing waits afterwards. The caller answers what did, and is done with this object then.
LocationDataBridge::LocationContinuation LocationDataBridge::endLocationRequest() {
    m_locationTimeoutTask = nullptr;
    m_locationRequestID = std::nullopt;
    return std::exchange(m_locationContinuation, nullptr);
}

void LocationDataBridge::withdraw(const LocationContinuation& continuation) {
    if (m_locationContinuation != continuation) return;
    endLocationRequest();
    m_manager.stopUpdatingLocation();
}

} // namespace bridge
