#pragma once

#include "base/date.h"

#include <exception>
#include <optional>
#include <string>
#include <vector>

namespace bridge {

// Where the device was, on WGS 84.
struct LocationFix {
    double latitude = 0;           // degrees, -90...90, north is positive
    double longitude = 0;          // degrees, -180...180, east is positive
    double horizontalAccuracy = 0; // metres, the radius around the place; negative when the place is not valid
    double altitude = 0;           // metres above sea level; 0 where it is not known
    Date timestamp;                // of the fix, not of the answer
    bool operator==(const LocationFix&) const = default;
};

// Hears what a location manager has to say. Always on the main thread, never from inside a call of the manager.
class LocationManagerDelegate {
public:
    // One or more fixes, the latest last.
    virtual void locationsUpdated(std::vector<LocationFix> fixes) = 0;
    // What was asked for won't come: a PlatformError in the platform's own words.
    virtual void requestFailed(std::exception_ptr error) = 0;
    // The status may be a new one; also said when the user has answered a request with what it was before.
    virtual void authorizationChanged() = 0;
    // The user could not be asked: a PlatformError that says why. The status is what it was.
    virtual void authorizationRequestFailed(std::exception_ptr error) = 0;

protected:
    ~LocationManagerDelegate() = default;
};

// The platform's location service, for one user of it. Main thread only.
class LocationManager {
public:
    virtual ~LocationManager() = default;

    // It outlives the manager, or is taken away before; with nobody to tell, answers are dropped.
    virtual void setDelegate(LocationManagerDelegate* delegate) = 0;

    // As PrivacyService::location numbers it (see Authorization); nothing when there is no such service here.
    virtual std::optional<int> authorizationStatus() const = 0;

    // Asks the user, where that is still open, and says authorizationChanged() when the user has answered, or at once
    // where nobody has to be asked. A question that can't be put says authorizationRequestFailed(). Asked again while a
    // question is open, the one answer is for both.
    virtual void requestWhenInUseAuthorization() = 0;

    // Asks for one fix, good to a hundred metres if it can be had. Answers at most once, by locationsUpdated() or
    // requestFailed(), and maybe never: the platform's own patience is not ours. Asking again forgets the request
    // before.
    virtual void requestLocation() = 0;

    // Forgets the request: nothing more is said of it, and what was looking for the place stops. Without one, nothing.
    virtual void stopUpdatingLocation() = 0;

    // Where the place comes from, for the user: "GeoClue". Where it comes from nowhere, that, and why.
    virtual std::string description() const = 0;
};

} // namespace bridge
