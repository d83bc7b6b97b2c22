#include "adapters/applescript/script_call.h"

#include "platform/script_engine.h"

#include <algorithm>
#include <fcntl.h>

namespace bridge::applescript {

ScriptCall::ScriptCall(Clock::duration time) {
    int ends[2];
    if (::pipe(ends) != 0) throw PlatformError::fromErrno("The script can't be run", errno);
    m_cancel = FileDescriptor(ends[0]);
    m_signal = FileDescriptor(ends[1]);
    for (const int end : ends)
        ::fcntl(end, F_SETFD, FD_CLOEXEC);
    m_deadline = Clock::now() + time;
}

ScriptCall::Limit::Limit(ScriptCall& call, Clock::duration time) : m_call(call), m_before(call.m_deadline) {
    const auto now = Clock::now();
    // Compared as durations, because a far deadline is beyond what the clock can count.
    if (time < m_before - now) m_call.m_deadline = now + time;
}

ScriptCall::Limit::~Limit() {
    m_call.m_deadline = m_before;
}

void ScriptCall::check() const {
    if (m_cancelled || Clock::now() >= m_deadline) throw ScriptError(ScriptError::timedOut, "AppleEvent timed out.");
}

std::chrono::milliseconds ScriptCall::remaining() const {
    if (m_cancelled) return {};
    return std::max(std::chrono::ceil<std::chrono::milliseconds>(m_deadline - Clock::now()),
                    std::chrono::milliseconds::zero());
}

void ScriptCall::cancel() {
    if (m_cancelled.exchange(true)) return;
    const char signal = 0;
    // An empty pipe takes one byte, so this neither blocks nor fails.
    [[maybe_unused]] const auto written = ::write(m_signal.get(), &signal, 1);
}

} // namespace bridge::applescript
