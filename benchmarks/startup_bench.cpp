#include "benchmarks/bare_server.h"
#include "benchmarks/http_load.h"
#include "benchmarks/measure.h"
#include "benchmarks/paired_bridge.h"
#include "benchmarks/server_process.h"
#include "tests/support/temporary_folder.h"

#include <fmt/format.h>
#include <fstream>
#include <unistd.h>

namespace {

using namespace bridge;
using namespace bridge::bench;

// A number of /proc/<pid>/status, such as "VmRSS".
long statusNumber(pid_t pid, const std::string& name) {
    std::ifstream status(fmt::format("/proc/{}/status", pid));
    for (std::string line; std::getline(status, line);)
        if (line.starts_with(name + ":")) return std::strtol(line.c_str() + name.size() + 1, nullptr, 10);
    return -1;
}

double millisecondsToListen(int port, const std::function<void()>& serve) {
    return 1e3 * secondsFor([&] {
               const ServerProcess server(0, serve);
               awaitListener(port);
           });
}

} // namespace

// From a new process to the first answer, what it holds in memory then, and how often it wakes with nothing to do.
int main() {
    static constexpr int barePort = 32124;
    const TemporaryFolder folder;
    const auto bridge = [&] { servePairedBridge(folder.path()); };
    report("start to the first answer",
           compare(
               9, [&] { return millisecondsToListen(barePort, [] { runBareServer(barePort, "x"); }); },
               [&] { return millisecondsToListen(BridgeHTTPServer::port, bridge); }),
           "ms");

    const ServerProcess server(0, bridge);
    awaitListener(BridgeHTTPServer::port);
    constexpr int seconds = 5;
    const auto wakeups = [&] { return statusNumber(server.pid(), "voluntary_ctxt_switches"); };
    sleep(1); // until the connection that asked is forgotten
    const long before = wakeups();
    sleep(seconds);
    fmt::print("{:<52} {:.1f} MB\n", "resident memory when idle",
               static_cast<double>(statusNumber(server.pid(), "VmRSS")) / 1024);
    fmt::print("{:<52} {:.1f} a second   goal none\n", "wake-ups when idle",
               static_cast<double>(wakeups() - before) / seconds);
}
