#include "adapters/valhalla/valhalla_directions.h"

#include "base/event_loop.h"
#include "base/json_writer.h"
#include "base/platform_error.h"
#include "tests/fakes/scripted_http_client.h"
#include "tests/support/temporary_folder.h"

#include <gmock/gmock.h>

namespace bridge {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

const DirectionsQuery byCar{{47.141, 9.5215}, {47.0667, 9.502}, TransportType::automobile, AlternateRoutes::yes};

std::string recordedAnswer(const std::string& name) {
    return getFile(BRIDGE_OWN_TEST_DATA "/valhalla/" + name + ".json");
}

// An answer whose only leg has these maneuvers.
std::string trip(const std::string& maneuvers, const std::string& units = "kilometers") {
    return R"({"trip":{"legs":[{"maneuvers":[)" + maneuvers + R"(]}],"summary":{"length":2,"time":60.5},"units":")" +
           units + "\"}}";
}

std::string along(const std::string& names, double length) {
    return R"({"length":)" + std::to_string(length) + R"(,"street_names":)" + names + "}";
}

class ValhallaDirectionsTest : public testing::Test {
protected:
    std::vector<Route> answer(std::string body, DirectionsQuery query = byCar) {
        client.willAnswer(200, std::move(body));
        return loop.runUntilDone(directions.calculate(query));
    }
    std::string failure(int status, std::string body, TransportType transport = TransportType::automobile) {
        client.willAnswer(status, std::move(body));
        return failure(transport);
    }
    std::string failure(TransportType transport) {
        auto query = byCar;
        query.transport = transport;
        try {
            loop.runUntilDone(directions.calculate(query));
            return "";
        } catch (const PlatformError& error) {
            return error.what();
        }
    }
    std::string name(const std::string& maneuvers) { return answer(trip(maneuvers)).at(0).name; }
    std::string sent(TransportType transport, AlternateRoutes alternates, const std::string& language) {
        client.willAnswer(400, "");
        auto query = byCar;
        query.transport = transport;
        query.alternates = alternates;
        ValhallaDirections asked(client, "http://h:8002/maps", language);
        EXPECT_THROW(loop.runUntilDone(asked.calculate(query)), PlatformError);
        return client.requests().back().body;
    }

    EventLoop loop;
    ScriptedHTTPClient client;
    ValhallaDirections directions{client, "http://h:8002/maps", "en-US"};
};

TEST_F(ValhallaDirectionsTest, AskForTheRouteAndNothingElse) {
    EXPECT_EQ(sent(TransportType::automobile, AlternateRoutes::yes, "en-US"),
              R"({"alternates":2,"costing":"auto","directions_type":"instructions","language":"en",)"
              R"("locations":[{"lat":47.141,"lon":9.5215},{"lat":47.0667,"lon":9.502}],"units":"kilometers"})");
    const auto& request = client.requests().back();
    EXPECT_EQ(request.method, "POST");
    EXPECT_EQ(request.url, "http://h:8002/maps/route");
    EXPECT_EQ(request.headers.at("Content-Type"), "application/json");
    EXPECT_EQ(request.timeout, std::chrono::seconds(30));
}

TEST_F(ValhallaDirectionsTest, NameEveryKindOfTransport) {
    EXPECT_THAT(sent(TransportType::walking, AlternateRoutes::no, "en"), HasSubstr(R"("costing":"pedestrian")"));
    EXPECT_THAT(sent(TransportType::cycling, AlternateRoutes::no, "en"), HasSubstr(R"("costing":"bicycle")"));
    EXPECT_THAT(sent(TransportType::transit, AlternateRoutes::no, "en"), HasSubstr(R"("costing":"multimodal")"));
    EXPECT_THAT(sent(TransportType::transit, AlternateRoutes::no, "en"), HasSubstr(R"("alternates":0)"));
}

TEST_F(ValhallaDirectionsTest, SpeakTheUsersLanguageAsValhallaCallsIt) {
    const std::pair<const char*, const char*> languages[] = {{"de-CH", "de"}, {"de", "de"},       {"en-GB", "en-GB"},
                                                             {"en-US", "en"}, {"pt-BR", "pt-BR"}, {"pt-AO", "pt"},
                                                             {"nb-NO", "nb"}, {"no", "nb"}};
    for (const auto& [ours, theirs] : languages)
        EXPECT_THAT(sent(TransportType::walking, AlternateRoutes::no, ours),
                    HasSubstr(std::string(R"("language":")") + theirs + '"'));
}

TEST_F(ValhallaDirectionsTest, AreWhatTheServerSaid) {
    const auto routes = answer(recordedAnswer("automobile"));
    ASSERT_EQ(routes.size(), 2U);
    EXPECT_EQ(routes[0].distance, 9242);
    EXPECT_EQ(routes[0].expectedTravelTime, 638.236);
    EXPECT_EQ(routes[0].name, "Austrasse – Landstrasse");
    EXPECT_EQ(routes[0].steps[0], "Drive west on Städtle.");
    EXPECT_EQ(routes[0].steps[1], "Enter Adlerkreisel and take the 2nd exit onto Äulestrasse.");
    EXPECT_EQ(routes[1].distance, 10052);
    EXPECT_NE(routes[1].name, routes[0].name);
}

TEST_F(ValhallaDirectionsTest, AreInTheLanguageOfTheAnswer) {
    EXPECT_EQ(answer(recordedAnswer("german")).at(0).steps.at(0), "Auf Städtle Richtung Westen fahren.");
}

TEST_F(ValhallaDirectionsTest, CountMilesToo) {
    EXPECT_EQ(answer(trip(along(R"(["A"])", 1), "miles")).at(0).distance, 3218.688);
}

TEST_F(ValhallaDirectionsTest, AreNamedAfterTheOneOrTwoLongestStreets) {
    EXPECT_EQ(name(""), "");
    EXPECT_EQ(name(along(R"(["A"])", 0)), "A");
    EXPECT_EQ(name(along(R"(["A"])", 1) + "," + along(R"(["B"])", 3) + "," + along(R"(["C"])", 2)), "B – C");
    EXPECT_EQ(name(along(R"(["A"])", 2) + "," + along(R"(["B"])", 3) + "," + along(R"(["C"])", 1)), "A – B");
    EXPECT_EQ(name(along(R"(["A"])", 5) + "," + along(R"(["B"])", 1)), "A");
    // Left and come back to.
    EXPECT_EQ(name(along(R"(["A"])", 2) + "," + along(R"(["B"])", 3) + "," + along(R"(["A"])", 2)), "A – B");
}

TEST_F(ValhallaDirectionsTest, SkipStreetsWithoutANameInTheirName) {
    EXPECT_EQ(name(R"({"length":9},)" + along("[]", 9) + "," + along(R"(["", " "])", 9) + "," +
                   along(R"(["", "A 13", "E 43"])", 1)),
              "A 13");
}

TEST_F(ValhallaDirectionsTest, KeepEveryStepInOrderAlsoAnEmptyOne) {
    const auto routes = answer(trip(R"({"length":1,"instruction":"Go."},{"length":1},{"length":0,"instruction":""})"));
    EXPECT_THAT(routes.at(0).steps, ElementsAre("Go.", "", ""));
}

TEST_F(ValhallaDirectionsTest, TakeARideFromATransitAnswer) {
    auto query = byCar;
    query.transport = TransportType::transit;
    const auto routes =
        answer(trip(R"({"length":1,"travel_mode":"pedestrian"},{"length":9,"travel_mode":"transit"})"), query);
    EXPECT_EQ(routes.size(), 1U);
}

TEST_F(ValhallaDirectionsTest, TellThatThereAreNoTimetables) {
    const auto* expected = "No ride by public transport was found. The directions server may have no timetables for "
                           "these places.";
    EXPECT_EQ(failure(400, recordedAnswer("no_timetables"), TransportType::transit), expected);
    // A walk all the way is no ride.
    EXPECT_EQ(failure(200, recordedAnswer("walking"), TransportType::transit), expected);
}

TEST_F(ValhallaDirectionsTest, TellInTheUsersWordsWhyThereIsNoWay) {
    EXPECT_EQ(failure(400, recordedAnswer("sea")),
              "One of the places is near no road that can be taken by car, or not on "
              "the directions server's map.");
    EXPECT_EQ(failure(400, recordedAnswer("far"), TransportType::walking),
              "The places are farther apart than the directions server goes on foot.");
    for (const auto* code : {"170", "441", "442"})
        EXPECT_EQ(failure(400, std::string(R"({"error_code":)") + code + "}", TransportType::cycling),
                  "There is no way by bicycle between these places.");
    EXPECT_EQ(failure(400, R"({"error_code":125,"error":"No costing method found for 'bicycle'"})"),
              "The directions server knows no ways by car.");
}

TEST_F(ValhallaDirectionsTest, PassOnWhatTheServerSaysOtherwise) {
    EXPECT_EQ(failure(400, R"({"error_code":163,"error":"Invalid date_type"})"),
              "The directions server refused: Invalid date_type (error 163)");
    EXPECT_EQ(failure(400, R"({"error_code":199,"error":"a\nb\u0000c"})"),
              "The directions server refused: a b c (error 199)");
    EXPECT_LT(failure(400, R"({"error_code":199,"error":")" + std::string(100000, 'x') + "\"}").size(), 300U);
}

TEST_F(ValhallaDirectionsTest, TellWhatAnswersInsteadOfValhalla) {
    const std::string page = "<!DOCTYPE html><html><body>Hello</body></html>";
    EXPECT_THAT(failure(200, page), StartsWith("The directions server's answer is not Valhalla's: "));
    for (const int status : {204, 301, 307, 400, 404, 405})
        EXPECT_THAT(failure(status, page), HasSubstr("is no Valhalla (HTTP status " + std::to_string(status) + ")"));
    for (const int status : {500, 502, 503})
        EXPECT_THAT(failure(status, page), HasSubstr("out of order (HTTP status " + std::to_string(status) + ")"));
    for (const int status : {401, 403})
        EXPECT_THAT(failure(status, page), HasSubstr("a key"));
    EXPECT_THAT(failure(429, page), HasSubstr("too often"));
}

TEST_F(ValhallaDirectionsTest, TellThatTheServerDidNotAnswer) {
    client.willFail("Operation timed out after 30001 milliseconds with 0 bytes received");
    EXPECT_EQ(failure(TransportType::walking), "The directions server could not be asked. Operation timed out after "
                                               "30001 milliseconds with 0 bytes received");
}

TEST_F(ValhallaDirectionsTest, RefuseAnAnswerThatEndsTooSoon) {
    const auto whole = recordedAnswer("same_place");
    for (size_t length = 0; length < whole.size(); ++length)
        EXPECT_NE(failure(200, whole.substr(0, length)), "") << length;
}

TEST_F(ValhallaDirectionsTest, RefuseWrongTypesWhereverTheyAre) {
    for (const auto* body : {"null", "[]", "1", "{}", R"({"trip":null})", R"({"trip":[]})", R"({"trip":{}})",
                             R"({"trip":{"legs":{},"summary":{"length":1,"time":1},"units":"kilometers"}})",
                             R"({"trip":{"legs":[1],"summary":{"length":1,"time":1},"units":"kilometers"}})",
                             R"({"trip":{"legs":[],"summary":{"length":"1","time":1},"units":"kilometers"}})",
                             R"({"trip":{"legs":[],"summary":{"length":1},"units":"kilometers"}})",
                             R"({"trip":{"legs":[],"summary":{"length":-1,"time":1},"units":"kilometers"}})",
                             R"({"trip":{"legs":[],"summary":{"length":1,"time":-1},"units":"kilometers"}})",
                             R"({"trip":{"legs":[],"summary":{"length":1e303,"time":1},"units":"kilometers"}})",
                             R"({"trip":{"legs":[],"summary":{"length":1,"time":1},"units":"leagues"}})"})
        EXPECT_THAT(failure(200, body), StartsWith("The directions server's answer is not Valhalla's: ")) << body;
    for (const auto* maneuver : {"1", "{}", R"({"length":"1"})", R"({"length":1,"instruction":5})",
                                 R"({"length":1,"street_names":"A"})", R"({"length":1,"street_names":[1]})"})
        EXPECT_NE(failure(200, trip(maneuver)), "") << maneuver;
    const auto good = trip("");
    EXPECT_NE(failure(200, good.substr(0, good.size() - 1) + R"(,"alternates":{}})"), "");
    EXPECT_NE(failure(200, good.substr(0, good.size() - 1) + R"(,"alternates":[{}]})"), "");
}

TEST_F(ValhallaDirectionsTest, AreDescribedWithTheMapsOwners) {
    EXPECT_EQ(directions.description(), "Valhalla at h:8002 (map © OpenStreetMap contributors, ODbL)");
}

} // namespace
} // namespace bridge
