#pragma once

#include "base/date.h"

#include <chrono>

namespace bridge {

class Clock {
public:
    virtual ~Clock() = default;

    virtual Date now() const = 0;
    // For measuring how long something took; unrelated to the date, never goes back.
    virtual std::chrono::milliseconds uptime() const = 0;
};

} // namespace bridge
