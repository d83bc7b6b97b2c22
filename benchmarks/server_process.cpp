#include "benchmarks/server_process.h"

#include "benchmarks/http_load.h"
#include "benchmarks/measure.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace bridge::bench {

ServerProcess::ServerProcess(int core, const std::function<void()>& serve) : m_pid(fork()) {
    if (m_pid != 0) return;
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    pinTo(core);
    serve();
    std::_Exit(0);
}

ServerProcess::~ServerProcess() {
    kill(m_pid, SIGKILL);
    waitpid(m_pid, nullptr, 0);
}

double ServerProcess::cpuSeconds() const {
    clockid_t clock;
    timespec used{};
    if (clock_getcpuclockid(m_pid, &clock) != 0 || clock_gettime(clock, &used) != 0) std::exit(1);
    return static_cast<double>(used.tv_sec) + static_cast<double>(used.tv_nsec) / 1e9;
}

void awaitListener(int port) {
    for (int attempt = 0; attempt < 10'000; ++attempt) {
        if (!fetch(port, "GET / HTTP/1.1\r\n\r\n").empty()) return;
        usleep(1000);
    }
    std::fprintf(stderr, "nobody listens on port %d\n", port);
    std::exit(1);
}

} // namespace bridge::bench
