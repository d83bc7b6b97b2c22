#include "tests/contracts/directions_contract.h"

#include "adapters/curl/curl_http_client.h"
#include "adapters/valhalla/valhalla_directions.h"
#include "tests/support/temporary_folder.h"
#include "tools/agent_server/stand_in_agent_server.h"
#include "tools/valhalla_server/valhalla_server.h"

#include <optional>

namespace bridge {
namespace {

// A server that says what Valhalla once said.
class RecordedValhalla : public DirectionsUnderTest {
public:
    EventLoop& loop() override { return m_loop; }
    Directions& directions() override { return m_directions; }
    void expect(const DirectionsQuery& query) override {
        if (!m_isBroken)
            m_server.answerWith(statusOf(query), getFile(BRIDGE_OWN_TEST_DATA "/valhalla/" + fileOf(query)));
    }
    void breakDown() override {
        m_isBroken = true;
        m_server.answerWith(502, "<html><body>Bad Gateway</body></html>");
    }
    void repair() override { m_isBroken = false; }

private:
    static int statusOf(const DirectionsQuery& query) {
        return query.destination == places::sea || query.destination == places::sydney ? 400 : 200;
    }
    static std::string fileOf(const DirectionsQuery& query) {
        if (query.destination == places::sea) return "sea.json";
        if (query.destination == places::sydney) return "far.json";
        if (query.destination == places::vaduz) return "same_place.json";
        if (query.alternates == AlternateRoutes::no) return "automobile_alone.json";
        return query.transport == TransportType::walking   ? "walking.json"
               : query.transport == TransportType::cycling ? "cycling.json"
                                                           : "automobile.json";
    }

    EventLoop m_loop;
    StandInAgentServer m_server;
    CurlHTTPClient m_client{m_loop};
    ValhallaDirections m_directions{m_client, m_server.url(), "en-US"};
    bool m_isBroken = false;
};

class LiveValhalla : public DirectionsUnderTest {
public:
    LiveValhalla() {
        if (hindrance().empty()) repair();
    }
    std::string hindrance() const override { return ValhallaServer::hindrance(); }
    EventLoop& loop() override { return m_loop; }
    Directions& directions() override { return *m_directions; }
    void breakDown() override { m_server->end(); }
    void repair() override {
        m_server.emplace(m_folder.file("map"));
        m_directions.emplace(m_client, m_server->url(), "en-US");
    }

private:
    TemporaryFolder m_folder;
    EventLoop m_loop;
    CurlHTTPClient m_client{m_loop};
    std::optional<ValhallaServer> m_server;
    std::optional<ValhallaDirections> m_directions;
};

const DirectionsKind recorded{"RecordedValhalla", [] { return std::make_unique<RecordedValhalla>(); }};
const DirectionsKind live{"LiveValhalla", [] { return std::make_unique<LiveValhalla>(); }};
INSTANTIATE_TEST_SUITE_P(Adapters, DirectionsContract, testing::Values(recorded, live), nameOf);

} // namespace
} // namespace bridge
