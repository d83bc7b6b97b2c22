#include "benchmarks/bare_server.h"
#include "benchmarks/http_load.h"
#include "benchmarks/measure.h"
#include "benchmarks/paired_bridge.h"
#include "benchmarks/server_process.h"
#include "tests/support/temporary_folder.h"

// GET /health, each on a connection of its own, 16 in flight, server and client on a core each: the server's processor
// time for one request, against a loop that does nothing but accept, receive, send and close.
int main() {
    using namespace bridge;
    using namespace bridge::bench;
    constexpr int barePort = 32124;
    constexpr int requests = 20'000;
    constexpr int inFlight = 16;
    const std::string request = std::string("GET /health HTTP/1.1\r\nHost: 127.0.0.1:32123\r\nAuthorization: Bearer ") +
                                credential + "\r\n\r\n";

    const TemporaryFolder folder;
    const ServerProcess ours(0, [&] { servePairedBridge(folder.path()); });
    awaitListener(BridgeHTTPServer::port);
    const auto answer = fetch(BridgeHTTPServer::port, request);
    if (!answer.starts_with("HTTP/1.1 200")) {
        std::fprintf(stderr, "%s\n", answer.c_str());
        return 1;
    }
    const ServerProcess bare(0, [&] { runBareServer(barePort, answer); });
    awaitListener(barePort);
    pinTo(1);

    const auto microseconds = [&](const ServerProcess& server, int port) {
        const double before = server.cpuSeconds();
        load(port, request, answer.size(), requests, inFlight);
        return (server.cpuSeconds() - before) / requests * 1e6;
    };
    microseconds(bare, barePort);
    microseconds(ours, BridgeHTTPServer::port);
    const auto comparison = compare(
        7, [&] { return microseconds(bare, barePort); }, [&] { return microseconds(ours, BridgeHTTPServer::port); });
    report("GET /health, server CPU a request", comparison, "µs", "goal 1.25, limit 1.60");
}
