#pragma once

#include "base/event_loop.h"

#include <functional>

namespace bridge {

// Calls `action` on the loop when the process is asked to end (SIGTERM, SIGINT, or SIGHUP when its terminal closes).
// The loop outlives this.
class TerminationSignals {
public:
    TerminationSignals(EventLoop& loop, std::function<void()> action);
    ~TerminationSignals();
    TerminationSignals(const TerminationSignals&) = delete;
    TerminationSignals& operator=(const TerminationSignals&) = delete;

private:
    struct State;
    State* m_state; // freed by the loop once it has let go of both handles
};

} // namespace bridge
