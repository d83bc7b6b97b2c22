#pragma once

#include <chrono>
#include <gio/gio.h>
#include <memory>

namespace bridge {

// Cancels what takes too long, on a thread of its own: a change that has to be finished or taken back keeps its limit
// also when the loop has ended.
class DeadlineKeeper {
public:
    DeadlineKeeper();
    // When no deadline is left.
    ~DeadlineKeeper();
    DeadlineKeeper(const DeadlineKeeper&) = delete;
    DeadlineKeeper& operator=(const DeadlineKeeper&) = delete;

private:
    friend class Deadline;
    struct State;
    std::unique_ptr<State> m_state;
};

// From its making until it goes. Any thread.
class Deadline {
public:
    Deadline(DeadlineKeeper& keeper, std::chrono::milliseconds delay, std::shared_ptr<GCancellable> cancellable);
    ~Deadline();
    Deadline(const Deadline&) = delete;
    Deadline& operator=(const Deadline&) = delete;

private:
    DeadlineKeeper::State& m_keeper;
    std::chrono::steady_clock::time_point m_time;
    std::shared_ptr<GCancellable> m_cancellable;
};

} // namespace bridge
