#pragma once

#include <csignal>

namespace bridge {

// A process that does nothing as long as this lives.
class Stopped {
public:
    explicit Stopped(pid_t process) : m_process(process) { ::kill(m_process, SIGSTOP); }
    Stopped(const Stopped&) = delete;
    Stopped& operator=(const Stopped&) = delete;
    ~Stopped() { ::kill(m_process, SIGCONT); }

private:
    pid_t m_process;
};

} // namespace bridge
