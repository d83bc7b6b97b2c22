#include "adapters/mpd/waiting.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <poll.h>

namespace bridge::mpd {

namespace {

// Whether the descriptor is ready; a call that was given up is seen by the caller.
bool wait(int descriptor, short events, std::chrono::milliseconds longest, const musicapp::Call& call) {
    std::array<pollfd, 2> watched{{{descriptor, events, 0}, {call.cancelDescriptor(), POLLIN, 0}}};
    const auto time = std::min({longest, call.remaining(), std::chrono::milliseconds(INT_MAX)});
    const int ready = poll(watched.data(), watched.size(), static_cast<int>(time.count()));
    if (ready < 0 && errno != EINTR) throw PlatformError::fromErrno("poll", errno);
    return ready > 0 && watched[0].revents != 0;
}

} // namespace

void awaitDescriptor(int descriptor, short events, musicapp::Call& call) {
    while (!wait(descriptor, events, std::chrono::hours(1), call))
        call.check();
}

void pauseFor(std::chrono::milliseconds time, musicapp::Call& call) {
    call.check();
    wait(-1, 0, time, call);
    call.check();
}

} // namespace bridge::mpd
