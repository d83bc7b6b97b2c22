#pragma once

#include <functional>
#include <memory>

namespace bridge {

// One thread for one blocking library. Jobs run one at a time in the order given. A job sees values only, never an
// object of the main thread. Destroying the worker waits for the job that is running and drops the ones behind it.
class Worker {
public:
    Worker();
    ~Worker();
    Worker(const Worker&) = delete;
    Worker& operator=(const Worker&) = delete;

    // Any thread. The job must not throw.
    void run(std::function<void()> job);

private:
    struct State;
    std::unique_ptr<State> m_state;
};

} // namespace bridge
