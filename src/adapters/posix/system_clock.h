#pragma once

#include "platform/clock.h"

namespace bridge {

class SystemClock : public Clock {
public:
    Date now() const override;
    std::chrono::milliseconds uptime() const override;
};

} // namespace bridge
