#pragma once

#include "base/task.h"
#include "bridges/common/permission_state.h"
#include "bridges/location/continuation.h"
#include "bridges/location/location_requests.h"
#include "bridges/location/location_results.h"
#include "platform/alarm_clock.h"
#include "platform/directions.h"
#include "platform/local_search.h"
#include "platform/location_manager.h"

namespace bridge {

// Where the device is, places by name, and the way from one to another.
//
// Main thread only; what it is made of outlives it. One location request and one permission request wait at any moment:
// a newer one takes the place of the older, which fails at once with AppleBridgeError operationFailed. A task that is
// dropped withdraws its own request and no other; a task whose bridge is gone waits until it is dropped. What the
// platform reports as an error is thrown as it is.
class LocationDataBridge final : private LocationManagerDelegate {
public:
    LocationDataBridge(LocationManager& manager, LocalSearch& localSearch, Directions& directions, AlarmClock& alarms);
    ~LocationDataBridge();
    LocationDataBridge(const LocationDataBridge&) = delete;
    LocationDataBridge& operator=(const LocationDataBridge&) = delete;

    // What the manager says now; `unavailable` where there is no location service.
    BridgePermissionState locationPermission() const;

    // Asks the user. Waits until the answer is known, however long.
    Task<BridgePermissionState> requestLocationAccess();

    // Throws AppleBridgeError: permissionDenied unless location is always allowed (the user is not asked), and
    // operationFailed when there is no fix within 15 seconds.
    Task<LocationDescriptor> currentLocation();

    // At most `limit` (1 to 25), the most relevant first; nearer to the point first where one is given. A wrong request
    // is AppleBridgeError malformedRequest, and nothing is searched.
    Task<std::vector<PlaceDescriptor>> searchPlaces(SearchPlacesRequest request);

    // The preferred route first. A wrong request is malformedRequest.
    Task<std::vector<RouteDescriptor>> directions(DirectionsRequest request);

private:
    using AccessContinuation = std::shared_ptr<Continuation<BridgePermissionState>>;
    using LocationContinuation = std::shared_ptr<Continuation<LocationFix>>;
    // Survives the bridge in the hands of whoever has to know whether it is still there.
    using Self = std::shared_ptr<LocationDataBridge*>;
    template <typename Waited> class Withdrawal;

    void locationsUpdated(std::vector<LocationFix> fixes) override;
    void requestFailed(std::exception_ptr error) override;
    void authorizationChanged() override;
    void authorizationRequestFailed(std::exception_ptr error) override;

    void startAccessRequest(AccessContinuation continuation);
    void startLocationRequest(LocationContinuation continuation);
    std::unique_ptr<PendingAlarm> startTimeout(std::string requestID);
    void locationTimedOut(const std::string& requestID);
    LocationContinuation endLocationRequest();
    void withdraw(const AccessContinuation& continuation);
    void withdraw(const LocationContinuation& continuation);

    LocationManager& m_manager;
    LocalSearch& m_localSearch;
    Directions& m_directions;
    AlarmClock& m_alarms;
    Self m_self = std::make_shared<LocationDataBridge*>(this);

    // Empty while nothing waits.
    AccessContinuation m_accessContinuation;
    LocationContinuation m_locationContinuation;
    std::optional<std::string> m_locationRequestID;
    std::unique_ptr<PendingAlarm> m_locationTimeoutTask;
};

} // namespace bridge
