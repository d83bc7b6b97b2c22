#pragma once

#include "app/instance_lock.h"
#include "app/instance_message.h"

#include <chrono>
#include <string>
#include <variant>

namespace bridge {

// How a start goes about being the only one.
struct OnlyInstanceWish {
    InstanceMessage toRunning;
    bool hasDisplay = false;
    std::chrono::milliseconds patience{5000};
    // With one that makes room: it may have to end programs of its own.
    std::chrono::milliseconds patienceWithItsEnd{30000};
};

struct RunningAlready {
    InstanceAnswer answer;
};

// The lock, when no bridge of this user runs; else what the one that runs answered to `toRunning`. One without a
// display makes room for us when we have one. Throws PlatformError when the other neither answers nor ends in time.
std::variant<InstanceLock, RunningAlready> becomeOnlyInstance(const std::string& folder, const OnlyInstanceWish& wish);

} // namespace bridge
