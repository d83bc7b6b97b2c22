#include "adapters/curl/curl_http_client.h"
#include "adapters/valhalla/valhalla_directions.h"
#include "benchmarks/measure.h"
#include "tests/support/temporary_folder.h"
#include "tools/valhalla_server/valhalla_server.h"

#include <fmt/format.h>

namespace {

using namespace bridge;
using namespace bridge::bench;

// Passes everything on, and keeps the last request.
class KeepingClient : public HTTPClient {
public:
    explicit KeepingClient(HTTPClient& client) : m_client(client) {}

    Task<HTTPResponse> send(HTTPRequest request) override {
        last = request;
        return m_client.send(std::move(request));
    }

    HTTPRequest last;

private:
    HTTPClient& m_client;
};

} // namespace

int main() {
    if (const auto reason = ValhallaServer::hindrance(); !reason.empty()) {
        fmt::print(stderr, "{}\n", reason);
        return 1;
    }
    const TemporaryFolder folder;
    const ValhallaServer server(folder.file("map"));
    EventLoop loop;
    CurlHTTPClient curl(loop);
    KeepingClient client(curl);
    ValhallaDirections directions(client, server.url(), "en");
    const DirectionsQuery query{{47.141, 9.5215}, {47.0667, 9.502}, TransportType::walking, AlternateRoutes::yes};
    const auto ours = [&] { return 1e3 * secondsFor([&] { loop.runUntilDone(directions.calculate(query)); }); };
    const auto bare = [&] { return 1e3 * secondsFor([&] { loop.runUntilDone(curl.send(client.last)); }); };
    ours(); // the server prepares its map
    report("three walks of 9 km from Valhalla, against the bare HTTP call", compare(101, bare, ours), "ms",
           "goal 1.10");
}
