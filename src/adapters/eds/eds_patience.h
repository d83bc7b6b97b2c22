#pragma once

#include <chrono>

namespace bridge {

// The time that calls have.
struct EdsPatience {
    std::chrono::milliseconds reading = std::chrono::seconds(10);
    std::chrono::milliseconds writing = std::chrono::seconds(20);
    // What a listing waits at most to learn which calendars are writable.
    std::chrono::milliseconds listing = std::chrono::seconds(1);
};

} // namespace bridge
