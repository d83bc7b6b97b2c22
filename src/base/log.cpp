#include "base/log.h"

#include "base/date.h"
#include "base/event_loop.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <ctime>
#include <fmt/format.h>
#include <iterator>
#include <memory>
#include <poll.h>
#include <unistd.h>

namespace bridge::log {

namespace {

std::string gathered;
bool gathering = false;
int destination = STDERR_FILENO;

void append(std::string_view line) {
    fmt::format_to(std::back_inserter(gathered), "{} {}\n", formatDate({std::time(nullptr)}), line);
    if (!gathering) flush();
}

} // namespace

void request(std::string_view what, int status, std::chrono::milliseconds took) {
    append(fmt::format("{} {} {} ms", what, status, took.count()));
}

void note(std::string_view message) {
    append(message);
}

void writeTo(int descriptor) {
    flush();
    destination = descriptor;
}

void gatherOn(EventLoop& loop) {
    // Owned by the loop's list of actions, so it goes with the loop.
    struct Gathering {
        Gathering() { gathering = true; }
        Gathering(const Gathering&) = delete;
        Gathering& operator=(const Gathering&) = delete;
        ~Gathering() {
            gathering = false;
            flush();
        }
    };
    loop.beforeWaiting([token = std::make_shared<Gathering>()] { flush(); });
}

void flush() {
    std::string_view rest = gathered;
    while (!rest.empty()) {
        // A log that nobody reads is no reason to stop serving: what it does not take at once is lost. A pipe that is
        // ready takes PIPE_BUF bytes without waiting; O_NONBLOCK would be set for everybody who shares it.
        pollfd ready{destination, POLLOUT, 0};
        if (poll(&ready, 1, 0) <= 0 || !(ready.revents & POLLOUT)) break;
        const ssize_t written = write(destination, rest.data(), std::min<size_t>(rest.size(), PIPE_BUF));
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) break;
        rest.remove_prefix(static_cast<size_t>(written));
    }
    gathered.clear();
}

} // namespace bridge::log
