#include "adapters/curl/curl_http_client.h"
#include "adapters/valhalla/valhalla_directions.h"
#include "base/event_loop.h"
#include "base/platform_error.h"
#include "tests/support/temporary_folder.h"
#include "tools/valhalla_server/valhalla_server.h"

#include <csignal>
#include <gmock/gmock.h>
#include <optional>
#include <sys/wait.h>

namespace bridge {
namespace {

using testing::AllOf;
using testing::Contains;
using testing::Ge;
using testing::HasSubstr;
using testing::Le;

constexpr MapCoordinate vaduz{47.141, 9.5215};
constexpr MapCoordinate balzers{47.0667, 9.502};
constexpr MapCoordinate malbun{47.1009, 9.6089};
constexpr MapCoordinate peak{47.0542, 9.5581}; // Falknis, two kilometres above the valley

class LiveValhallaTest : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(ValhallaServer::hindrance(), "");
        server.emplace(folder.file("map"));
    }
    std::vector<Route> calculate(MapCoordinate from, MapCoordinate to, TransportType transport,
                                 const std::string& language = "en-US") {
        ValhallaDirections directions(client, server->url(), language);
        const DirectionsQuery query{from, to, transport, AlternateRoutes::yes};
        return loop.runUntilDone(directions.calculate(query));
    }
    std::string failure(MapCoordinate from, MapCoordinate to, TransportType transport) {
        try {
            calculate(from, to, transport);
            return "";
        } catch (const PlatformError& error) {
            return error.what();
        }
    }

    TemporaryFolder folder;
    EventLoop loop;
    CurlHTTPClient client{loop};
    std::optional<ValhallaServer> server;
};

TEST_F(LiveValhallaTest, KnowsTheWayFromVaduzToBalzers) {
    const auto routes = calculate(vaduz, balzers, TransportType::automobile);
    ASSERT_GE(routes.size(), 2U);
    EXPECT_THAT(routes[0].distance, AllOf(Ge(8800), Le(9700)));
    EXPECT_THAT(routes[0].expectedTravelTime, AllOf(Ge(400), Le(1000)));
    EXPECT_THAT(routes[0].name, HasSubstr("Landstrasse"));
    EXPECT_GE(routes[1].expectedTravelTime, routes[0].expectedTravelTime);
    EXPECT_THAT(calculate(vaduz, balzers, TransportType::walking)[0].expectedTravelTime, AllOf(Ge(5400), Le(7600)));
    EXPECT_THAT(calculate(vaduz, balzers, TransportType::cycling)[0].expectedTravelTime, AllOf(Ge(1500), Le(3000)));
}

TEST_F(LiveValhallaTest, ClimbsTheMountainToMalbun) {
    const auto routes = calculate(vaduz, malbun, TransportType::automobile);
    EXPECT_THAT(routes.at(0).distance, AllOf(Ge(11000), Le(20000)));
    EXPECT_LT(calculate(vaduz, malbun, TransportType::walking).at(0).distance, routes[0].distance);
}

TEST_F(LiveValhallaTest, SpeaksTheUsersLanguageOrEnglish) {
    EXPECT_THAT(calculate(vaduz, balzers, TransportType::automobile, "de-LI")[0].steps[0], HasSubstr("fahren"));
    EXPECT_THAT(calculate(vaduz, balzers, TransportType::automobile, "fr-FR")[0].steps[0], HasSubstr("Conduisez"));
    EXPECT_THAT(calculate(vaduz, balzers, TransportType::automobile, "gsw-LI")[0].steps[0], HasSubstr("Drive"));
}

TEST_F(LiveValhallaTest, HasNoTimetables) {
    EXPECT_THAT(failure(vaduz, balzers, TransportType::transit), HasSubstr("no timetables"));
}

TEST_F(LiveValhallaTest, TakesTheBusWhereItHasTimetables) {
    server.emplace(folder.file("with timetables"), Timetables::ofABus);
    const auto routes = calculate(vaduz, balzers, TransportType::transit);
    EXPECT_THAT(routes.at(0).steps, Contains("Take the 1 toward Balzers. (2 stops)"));
    EXPECT_THAT(routes[0].expectedTravelTime, AllOf(Ge(16 * 60), Le(45 * 60)));
    EXPECT_THAT(routes[0].distance, AllOf(Ge(8000), Le(10000)));
    EXPECT_EQ(failure(vaduz, balzers, TransportType::cycling), "");
    // So near that nobody would wait for the bus.
    EXPECT_THAT(failure(vaduz, {47.1415, 9.5218}, TransportType::transit), HasSubstr("No ride by public transport"));
}

TEST_F(LiveValhallaTest, AnswersForTheEndsOfTheEarth) {
    for (const MapCoordinate end : {MapCoordinate{90, 180}, MapCoordinate{-90, -180}, MapCoordinate{0, 0}})
        for (const auto transport :
             {TransportType::automobile, TransportType::walking, TransportType::cycling, TransportType::transit}) {
            EXPECT_NE(failure(vaduz, end, transport), "");
            EXPECT_NE(failure(end, vaduz, transport), "");
            EXPECT_NE(failure(end, end, transport), "");
        }
}

TEST_F(LiveValhallaTest, LeadsToThePathNearestAPeak) {
    const auto routes = calculate(vaduz, peak, TransportType::walking);
    ASSERT_FALSE(routes.empty());
    EXPECT_THAT(routes[0].distance, AllOf(Ge(15000), Le(20000)));
    EXPECT_THAT(routes[0].expectedTravelTime, AllOf(Ge(3 * 3600), Le(5 * 3600)));
}

TEST_F(LiveValhallaTest, ThatHasDiedIsAnError) {
    EXPECT_EQ(failure(vaduz, balzers, TransportType::automobile), "");
    kill(server->processID(), SIGKILL);
    siginfo_t how{};
    ASSERT_EQ(waitid(P_PID, static_cast<id_t>(server->processID()), &how, WEXITED | WNOWAIT), 0);
    EXPECT_THAT(failure(vaduz, balzers, TransportType::automobile),
                HasSubstr("The directions server could not be asked. "));
}

TEST_F(LiveValhallaTest, KeepsItsMap) {
    EXPECT_EQ(failure(vaduz, balzers, TransportType::automobile), "");
    server->end();
    const auto made = std::filesystem::last_write_time(folder / "map/complete");
    server.emplace(folder.file("map"));
    EXPECT_EQ(failure(vaduz, balzers, TransportType::automobile), "");
    EXPECT_EQ(std::filesystem::last_write_time(folder / "map/complete"), made);
}

TEST_F(LiveValhallaTest, EndsWhileItIsPreparingItsMap) {
    ValhallaDirections directions(client, server->url(), "en-US");
    auto dropped = directions.calculate({vaduz, balzers, TransportType::automobile, AlternateRoutes::no});
    dropped.start();
    server->end();
    EXPECT_EQ(server->processID(), 0);
}

TEST(ValhallaPackage, SaysThatItHasNothingForTheProcessor) {
    const TemporaryFolder package;
    EXPECT_THAT(ValhallaServer::hindranceOf(package.path(), "x86_64"), HasSubstr("has not been fetched"));
    putFile(package / "index.js", "");
    for (const auto* processor : {"x86_64", "aarch64", "riscv64"})
        EXPECT_EQ(ValhallaServer::hindranceOf(package.path(), processor),
                  std::string("Valhalla's npm package has no programs for ") + processor + '.');
    std::filesystem::create_directories(package / "linux/arm64");
    putFile(package / "linux/arm64/valhalla_node.node", "");
    putFile(package / "linux/arm64/valhalla_build_tiles", "");
    EXPECT_THAT(ValhallaServer::hindranceOf(package.path(), "aarch64"), testing::Not(HasSubstr("programs for")));
    EXPECT_THAT(ValhallaServer::hindranceOf(package.path(), "x86_64"), HasSubstr("programs for"));
}

} // namespace
} // namespace bridge
