#pragma once

#include "base/platform_error.h"
#include "platform/location_manager.h"

namespace bridge {

// A location service that says what the test has it say, when the test has it say it.
class ScriptedLocationManager : public LocationManager {
public:
    std::optional<int> status = 3;
    int accessRequests = 0;
    int locationRequests = 0;
    bool isLooking = false; // asked for a fix, and neither answered nor stopped

    void update(std::vector<LocationFix> fixes) {
        isLooking = isLooking && fixes.empty();
        if (m_delegate) m_delegate->locationsUpdated(std::move(fixes));
    }
    void fail(const std::string& message) {
        isLooking = false;
        if (m_delegate) m_delegate->requestFailed(std::make_exception_ptr(PlatformError(message)));
    }
    void changeStatus(std::optional<int> changed) {
        status = changed;
        if (m_delegate) m_delegate->authorizationChanged();
    }
    void failToAsk(const std::string& message) {
        if (m_delegate) m_delegate->authorizationRequestFailed(std::make_exception_ptr(PlatformError(message)));
    }
    bool hasDelegate() const { return m_delegate != nullptr; }

    void setDelegate(LocationManagerDelegate* delegate) override { m_delegate = delegate; }
    std::optional<int> authorizationStatus() const override { return status; }
    void requestWhenInUseAuthorization() override { ++accessRequests; }
    void requestLocation() override {
        ++locationRequests;
        isLooking = true;
    }
    void stopUpdatingLocation() override { isLooking = false; }
    std::string description() const override { return "a script"; }

private:
    LocationManagerDelegate* m_delegate = nullptr;
};

} // namespace bridge
