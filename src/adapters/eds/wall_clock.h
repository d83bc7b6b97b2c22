#pragma once

#include "base/date.h"

#include <chrono>

namespace bridge {

// For what an item says about its own changes.
inline Date now() {
    using namespace std::chrono;
    return {duration_cast<seconds>(system_clock::now().time_since_epoch()).count()};
}

} // namespace bridge
