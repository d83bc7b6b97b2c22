#include "tests/support/becomes_true.h"
#include "tests/support/running_bridge.h"
#include "tests/support/wire_client.h"

#include <gmock/gmock.h>

namespace bridge {
namespace {

using namespace std::chrono_literals;

class LocationOverTheWire : public testing::Test {
protected:
    // A client that has asked for the location and whom the bridge has begun to answer.
    std::unique_ptr<WireClient> waiting() {
        const int before = requests();
        auto client = std::make_unique<WireClient>();
        client->send(requestBytes("POST", "/v1/execute", R"({"operation":"location.current"})"));
        EXPECT_TRUE(becomesTrue([&] { return requests() != before; }));
        return client;
    }
    int requests() {
        return bridge.onLoop([&](BridgeModel&) { return bridge.locationManager().locationRequests; });
    }
    void findPlace() {
        const LocationFix fix{52.52, 13.405, 12.5, 34, {1786706921}};
        bridge.onLoop([&](BridgeModel&) { bridge.locationManager().update({fix}); });
    }
    static WireAnswer answerTo(WireClient& client) { return readAnswer(client.receiveAll()); }
    static std::string result(const std::string& operation, const std::string& payload) {
        return writeJSON(call(operation, payload).result());
    }

    RunningBridge bridge{RunningBridge::Consent::full};
    const std::string here = R"({"altitude":34,"horizontalAccuracy":12.5,"latitude":52.52,"longitude":13.405,)"
                             R"("timestamp":"2026-08-14T11:28:41Z"})";
};

TEST_F(LocationOverTheWire, IsTheFix) {
    const auto client = waiting();
    findPlace();
    EXPECT_EQ(writeJSON(answerTo(*client).result()), here);
}

TEST_F(LocationOverTheWire, IsForAgentsWhoseUserAllowsIt) {
    bridge.onLoop([&](BridgeModel&) { bridge.locationManager().status = 4; });
    const auto answer = call("location.current");
    EXPECT_EQ(answer.status, 403);
    EXPECT_EQ(answer.code(), "permission_denied");
    EXPECT_EQ(answer.message(), "Full access to Location has not been granted.");
    const auto permissions = call("permissions.get").result();
    EXPECT_EQ(*permissions.object()->at("location").string(), "unknown");
}

TEST_F(LocationOverTheWire, GoesToTheNewerOfTwoClients) {
    const auto first = waiting();
    const auto second = waiting();
    const auto replaced = answerTo(*first);
    EXPECT_EQ(replaced.status, 400);
    EXPECT_EQ(replaced.code(), "operation_failed");
    EXPECT_EQ(replaced.message(), "Operation failed: A newer location request replaced this one.");
    findPlace();
    EXPECT_EQ(writeJSON(answerTo(*second).result()), here);
}

TEST_F(LocationOverTheWire, ThatIsNotFoundInTimeIsAnError) {
    const auto client = waiting();
    bridge.onLoop([&](BridgeModel&) { bridge.alarmClock().advance(15s); });
    const auto late = answerTo(*client);
    EXPECT_EQ(late.status, 400);
    EXPECT_EQ(late.message(), "Operation failed: Location did not respond within 15 seconds.");
}

TEST_F(LocationOverTheWire, ThatThePlatformDoesNotFindIsItsError) {
    const auto client = waiting();
    bridge.onLoop([&](BridgeModel&) { bridge.locationManager().fail("There is no signal."); });
    const auto failed = answerTo(*client);
    EXPECT_EQ(failed.status, 500);
    EXPECT_EQ(failed.code(), "internal_error");
    EXPECT_EQ(failed.message(), "There is no signal.");
}

// Its end of sending looks like a hang-up, and is none.
TEST_F(LocationOverTheWire, IsForAClientThatHasSaidAllItHasToSay) {
    const auto client = waiting();
    client->endSending();
    findPlace();
    EXPECT_EQ(writeJSON(answerTo(*client).result()), here);
}

TEST_F(LocationOverTheWire, IsFoundForTheNextClientWhenOneHasVanished) {
    waiting()->vanish();
    const auto next = waiting();
    findPlace();
    EXPECT_EQ(writeJSON(answerTo(*next).result()), here);
}

TEST_F(LocationOverTheWire, OfPlacesIsSearched) {
    bridge.onLoop([&](BridgeModel&) {
        bridge.localSearch().found = {
            {"Café \"Noir\"", {52.52, 13.405}, "Alley 3, Berlin", "+49 30 1", "https://example.org/"}, {}};
    });
    EXPECT_EQ(result("maps.places.search", R"({"query":" coffee ","latitude":52.5,"longitude":13.4,"limit":100})"),
              R"([{"address":"Alley 3, Berlin","id":"52.52,13.405,Café \"Noir\"","latitude":52.52,"longitude":13.405,)"
              R"("name":"Café \"Noir\"","phoneNumber":"+49 30 1","url":"https://example.org/"},)"
              R"({"address":"","id":"0.0,0.0,","latitude":0,"longitude":0,"name":"Unknown place"}])");
    EXPECT_EQ(call("maps.places.search", R"({"query":"x","latitude":1,"limit":3})").message(),
              "Malformed bridge request: Place search requires both latitude and longitude when either is supplied.");
    EXPECT_EQ(call("maps.places.search", R"({"query":"x"})").message(),
              "Malformed bridge request: .limit: required, but missing");
}

TEST_F(LocationOverTheWire, OfTwoPlacesHasWaysBetween) {
    bridge.onLoop([&](BridgeModel&) {
        bridge.directions().routes = {{"Alley", 300.5, 240, {"Turn left.", "", "Arrive."}}};
    });
    const std::string ends =
        R"({"originLatitude":1,"originLongitude":2,"destinationLatitude":3,"destinationLongitude":4,"transport":")";
    EXPECT_EQ(
        result("maps.directions", ends + R"(Cycling"})"),
        R"([{"distanceMeters":300.5,"expectedTravelSeconds":240,"name":"Alley","steps":["Turn left.","Arrive."]}])");
    EXPECT_EQ(call("maps.directions", ends + R"(bike"})").message(),
              "Malformed bridge request: Transport must be automobile, walking, transit, or cycling.");
}

} // namespace
} // namespace bridge
