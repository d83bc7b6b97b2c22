#pragma once

#include "adapters/location/location_source.h"
#include "base/event_loop.h"
#include "platform/authorization.h"

#include <functional>
#include <memory>

namespace bridge {

// The location service of a desktop whose own one knows nothing of us: whether we may know the place is the user's
// answer to us, where it is comes from the source.
class ConsentedLocationManager : public LocationManager {
public:
    // The loop and the authorization outlive it.
    ConsentedLocationManager(EventLoop& loop, Authorization& authorization, std::unique_ptr<LocationSource> source);
    ~ConsentedLocationManager() override;

    void setDelegate(LocationManagerDelegate* delegate) override { m_delegate = delegate; }
    std::optional<int> authorizationStatus() const override;
    void requestWhenInUseAuthorization() override;
    // Without the user's consent nothing looks for the place, and that is an error.
    void requestLocation() override;
    void stopUpdatingLocation() override;
    std::string description() const override { return m_source->description(); }

private:
    // What a manager that may be gone by then still has to say.
    struct Life {};
    using Words = std::function<void(LocationManagerDelegate&)>;

    Task<> ask();
    Task<> locate(uint64_t request);
    Task<LocationFix> fix();
    void say(Words words);
    void sayOf(uint64_t request, Words words);

    EventLoop& m_loop;
    Authorization& m_authorization;
    std::unique_ptr<LocationSource> m_source;
    LocationManagerDelegate* m_delegate = nullptr;
    std::shared_ptr<Life> m_life = std::make_shared<Life>();
    uint64_t m_request = 0; // what is said of another one than this comes too late
    Task<> m_asking;
    Task<> m_locating;
};

} // namespace bridge
