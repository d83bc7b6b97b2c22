#pragma once

#include "base/file_descriptor.h"

#include <atomic>
#include <chrono>

namespace bridge::applescript {

// How long a script may take, for whatever it calls. Made on the main thread and used on the script's.
class ScriptCall {
public:
    using Clock = std::chrono::steady_clock;

    // What a script has that says nothing of its time.
    static constexpr std::chrono::seconds usualTime{120};

    explicit ScriptCall(Clock::duration time = usualTime);
    ScriptCall(const ScriptCall&) = delete;
    ScriptCall& operator=(const ScriptCall&) = delete;

    // Narrows the time for as long as it lives: what is within a block can't take longer than the block.
    class Limit {
    public:
        Limit(ScriptCall& call, Clock::duration time);
        Limit(const Limit&) = delete;
        Limit& operator=(const Limit&) = delete;
        ~Limit();

    private:
        ScriptCall& m_call;
        Clock::time_point m_before;
    };

    // Throws ScriptError::timedOut when the time is over or the script was given up.
    void check() const;
    // What is left, never negative; check() is what throws.
    std::chrono::milliseconds remaining() const;
    // Becomes readable when the script is given up, for those who wait in poll().
    int cancelDescriptor() const { return m_cancel.get(); }
    // On any thread.
    void cancel();

private:
    FileDescriptor m_cancel, m_signal; // the two ends of a pipe
    std::atomic<bool> m_cancelled = false;
    Clock::time_point m_deadline;
};

} // namespace bridge::applescript
