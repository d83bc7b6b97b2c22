#pragma once

#include "base/apple_bridge_error.h"
#include "bridges/location/location_data_bridge.h"
#include "tests/fakes/manual_alarm_clock.h"
#include "tests/fakes/scripted_directions.h"
#include "tests/fakes/scripted_local_search.h"
#include "tests/fakes/scripted_location_manager.h"

#include <gmock/gmock.h>

namespace bridge {

class LocationBridgeTest : public testing::Test {
protected:
    LocationBridgeTest() { bridge.emplace(manager, localSearch, mapDirections, alarms); }

    template <typename T> static Task<T> started(Task<T> task) {
        task.start();
        return task;
    }
    // What a task ended with, as the client reads it; "" when it went well, "It waits." when it does.
    template <typename T> static std::string failureOf(Task<T>& task) {
        if (!task.done()) return "It waits.";
        try {
            task.take();
        } catch (const AppleBridgeError& error) {
            return error.message();
        } catch (const PlatformError& error) {
            return std::string("Platform: ") + error.what();
        }
        return "";
    }
    template <typename T> static std::string failureOf(Task<T>&& task) {
        task.start();
        return failureOf(task);
    }
    static std::string operationFailed(std::string_view detail) {
        return AppleBridgeError::operationFailed(detail).message();
    }
    static std::string malformed(std::string_view detail) {
        return AppleBridgeError::malformedRequest(detail).message();
    }

    const LocationFix here{52.52, 13.405, 12.5, 34, {1786706921}};
    const LocationFix there{-33.86, 151.21, 80, 0, {1786706922}};

    ScriptedLocationManager manager;
    ScriptedLocalSearch localSearch;
    ScriptedDirections mapDirections;
    ManualAlarmClock alarms;
    std::optional<LocationDataBridge> bridge;
};

} // namespace bridge
