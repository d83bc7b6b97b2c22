#pragma once

#include <functional>
#include <sys/types.h>

namespace bridge::bench {

// A server in a process of its own, on a core of its own; ended with this object.
class ServerProcess {
public:
    // `serve` runs in the new process and does not return.
    ServerProcess(int core, const std::function<void()>& serve);
    ~ServerProcess();
    ServerProcess(const ServerProcess&) = delete;
    ServerProcess& operator=(const ServerProcess&) = delete;

    pid_t pid() const { return m_pid; }
    // Processor time used so far, user and system.
    double cpuSeconds() const;

private:
    pid_t m_pid;
};

// Waits until somebody listens on 127.0.0.1:`port`; ends the program after ten seconds without.
void awaitListener(int port);

} // namespace bridge::bench
