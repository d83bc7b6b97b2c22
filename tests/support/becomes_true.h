#pragma once

#include <chrono>
#include <poll.h>

namespace bridge {

// Between two looks at something that tells nobody when it changes: others have the processor for a moment, also on a
// machine that has but one.
inline void betweenLooks() {
    constexpr int moment = 20;
    poll(nullptr, 0, moment);
}

// Only ends a test without hope: the slowest machine is to be done long before.
constexpr std::chrono::minutes hopeless(3);

// Looks again and again until it is so, or there is no hope any more.
template <typename Condition> bool becomesTrue(Condition condition) {
    const auto deadline = std::chrono::steady_clock::now() + hopeless;
    for (; !condition(); betweenLooks())
        if (std::chrono::steady_clock::now() > deadline) return false;
    return true;
}

} // namespace bridge
