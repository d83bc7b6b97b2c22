#pragma once

#include "tests/support/stop_process.h"

namespace bridge {

// A process that does nothing as long as this lives.
class Stopped {
public:
    explicit Stopped(pid_t process) : m_process(process) { stopProcess(m_process); }
    Stopped(const Stopped&) = delete;
    Stopped& operator=(const Stopped&) = delete;
    ~Stopped() { ::kill(m_process, SIGCONT); }

private:
    pid_t m_process;
};

} // namespace bridge
