#pragma once

#include <chrono>
#include <stdexcept>

namespace bridge::office {

class PatienceOver : public std::runtime_error {
public:
    PatienceOver() : std::runtime_error("no answer in time") {}
};

// How long to wait: until the time is there, or the descriptor becomes readable.
struct Patience {
    using Clock = std::chrono::steady_clock;
    Clock::time_point until = Clock::time_point::max();
    int cancel = -1;
};

enum class Readiness { reading, writing };

// Returns when the descriptor is ready or its other end is gone. Throws PatienceOver.
void waitFor(int descriptor, Readiness readiness, const Patience& patience);

} // namespace bridge::office
