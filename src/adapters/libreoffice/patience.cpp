#include "adapters/libreoffice/patience.h"

#include "base/platform_error.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <poll.h>

namespace bridge::office {

namespace {

int pollTime(Patience::Clock::time_point until) {
    if (until == Patience::Clock::time_point::max()) return -1;
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(until - Patience::Clock::now()).count();
    return static_cast<int>(std::clamp<decltype(left)>(left, 0, INT_MAX));
}

} // namespace

void waitFor(int descriptor, Readiness readiness, const Patience& patience) {
    const short event = readiness == Readiness::reading ? POLLIN : POLLOUT;
    std::array<pollfd, 2> watched{{{descriptor, event, 0}, {patience.cancel, POLLIN, 0}}};
    int ready = -1;
    do
        ready = poll(watched.data(), watched.size(), pollTime(patience.until));
    while (ready < 0 && errno == EINTR);
    if (ready < 0) throw PlatformError::fromErrno("poll", errno);
    if (ready == 0 || watched[1].revents != 0) throw PatienceOver();
}

} // namespace bridge::office
