#include "app/open_directions.h"

#include "base/event_loop.h"
#include "base/platform_error.h"
#include "tests/fakes/scripted_http_client.h"

#include <gmock/gmock.h>

namespace bridge {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::StartsWith;

class OpenDirections : public testing::Test {
protected:
    std::string failure(const ServiceSettings& settings) {
        const auto directions = openDirections(client, settings);
        try {
            loop.runUntilDone(directions->calculate({{47, 9}, {46, 9}, TransportType::walking, AlternateRoutes::yes}));
            return "";
        } catch (const PlatformError& error) {
            return error.what();
        }
    }

    EventLoop loop;
    ScriptedHTTPClient client;
};

TEST_F(OpenDirections, SayWhatIsMissingWithoutAServer) {
    EXPECT_EQ(failure({}), "No directions server is set. Name one that speaks Valhalla's HTTP interface as "
                           "\"directionsServer\" in services.json, such as \"http://127.0.0.1:8002\", and start "
                           "Brindlefox Apple Bridge again.");
    EXPECT_TRUE(client.requests().empty());
}

TEST_F(OpenDirections, SayWhatIsWrongWithTheServerThatWasNamed) {
    ServiceSettings settings;
    settings.faults["directionsServer"] = "services.json, .directionsServer: expected an address";
    EXPECT_THAT(failure(settings),
                AllOf(StartsWith("No directions server can be used. services.json, .directionsServer: expected"),
                      HasSubstr("start Brindlefox Apple Bridge again")));
}

TEST_F(OpenDirections, AskTheServerThatIsNamed) {
    ServiceSettings settings;
    settings.directionsServer = "http://h:1/maps";
    client.willFail("refused");
    EXPECT_EQ(failure(settings), "The directions server could not be asked. refused");
    EXPECT_EQ(client.requests().at(0).url, "http://h:1/maps/route");
    EXPECT_THAT(openDirections(client, settings)->description(), HasSubstr("© OpenStreetMap contributors"));
}

} // namespace
} // namespace bridge
