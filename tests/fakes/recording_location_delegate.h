#pragma once

#include "base/platform_error.h"
#include "platform/location_manager.h"

#include <functional>
#include <string>

namespace bridge {

// Writes down what it hears.
class RecordingDelegate final : public LocationManagerDelegate {
public:
    std::vector<LocationFix> fixes;
    std::vector<std::string> failures;
    std::vector<std::string> askFailures;
    size_t changes = 0;
    std::function<void()> then; // called each time

    size_t heard() const { return fixes.size() + failures.size() + askFailures.size() + changes; }

    void locationsUpdated(std::vector<LocationFix> found) override {
        fixes.insert(fixes.end(), found.begin(), found.end());
        if (then) then();
    }
    void requestFailed(std::exception_ptr error) override {
        failures.push_back(messageOf(error));
        if (then) then();
    }
    void authorizationChanged() override {
        ++changes;
        if (then) then();
    }
    void authorizationRequestFailed(std::exception_ptr error) override {
        askFailures.push_back(messageOf(error));
        if (then) then();
    }

private:
    static std::string messageOf(std::exception_ptr error) {
        try {
            std::rethrow_exception(error);
        } catch (const PlatformError& platformError) {
            return platformError.what();
        }
    }
};

} // namespace bridge
