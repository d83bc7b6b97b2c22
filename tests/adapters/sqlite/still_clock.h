#pragma once

#include "platform/clock.h"

namespace bridge {

// Shows what it was set to.
struct StillClock : Clock {
    Date date{1'786'700'000}; // 2026-08-14T10:13:20Z

    Date now() const override { return date; }
    std::chrono::milliseconds uptime() const override { return {}; }
};

} // namespace bridge
