#include "adapters/nominatim/nominatim_search.h"

#include "adapters/curl/curl_http_client.h"
#include "tests/adapters/nominatim/stand_in_nominatim.h"
#include "tests/contracts/local_search_contract.h"
#include "tests/fakes/manual_time.h"
#include "tests/fakes/scripted_http_client.h"

namespace bridge {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

// The adapter together with the client that it speaks through.
class OverHTTP : public LocalSearch {
public:
    OverHTTP(EventLoop& loop, const std::string& url)
        : m_client(loop),
          m_search(m_client, m_time, [this](std::chrono::milliseconds length) { return m_time.pause(length); },
                   {url, "BrindlefoxAppleBridge/1.2", "de-AT"}) {}

    Task<std::vector<MapItem>> search(LocalSearchQuery query) override { return m_search.search(std::move(query)); }
    std::string description() const override { return m_search.description(); }

private:
    CurlHTTPClient m_client;
    ManualTime m_time{ManualTime::Passes::byItself};
    NominatimSearch m_search;
};

class NominatimSite : public LocalSearchSite {
public:
    explicit NominatimSite(std::vector<WorldPlace> world) : m_server(std::move(world)) {}
    std::unique_ptr<LocalSearch> search(EventLoop& loop) override {
        return std::make_unique<OverHTTP>(loop, m_server.url());
    }
    std::unique_ptr<LocalSearch> searchWithoutService(EventLoop& loop) override {
        const StandInNominatim gone({});
        return std::make_unique<OverHTTP>(loop, gone.url());
    }

private:
    StandInNominatim m_server;
};

const LocalSearchKind kind{"Nominatim",
                           [](const std::vector<WorldPlace>& world) { return std::make_unique<NominatimSite>(world); }};
INSTANTIATE_TEST_SUITE_P(Adapters, LocalSearchContract, testing::Values(kind), nameOf);

class Nominatim : public testing::Test {
protected:
    std::vector<MapItem> search(const std::string& query, std::optional<MapRegion> region = std::nullopt) {
        return loop.runUntilDone(places.search({query, region}));
    }
    std::vector<MapItem> answered(const std::string& body) {
        client.willAnswer(200, body);
        return search("anything");
    }
    std::string failure(int status, const std::string& body) {
        client.willAnswer(status, body);
        return failure(places);
    }
    std::string failure(NominatimSearch& where) {
        try {
            return std::to_string(loop.runUntilDone(where.search({"anything", std::nullopt})).size()) + " found";
        } catch (const PlatformError& error) {
            return error.what();
        }
    }

    EventLoop loop;
    ScriptedHTTPClient client;
    ManualTime time{ManualTime::Passes::byItself};
    NominatimSearch places{client,
                           time,
                           [this](std::chrono::milliseconds length) { return time.pause(length); },
                           {"https://places.example.org/osm/", "BrindlefoxAppleBridge/1.2", "de-AT"}};
};

TEST_F(Nominatim, AsksInTheWordsOfItsInterface) {
    client.willAnswer(200, "[]");
    search("Café & Bar, 100% München");
    const auto& request = client.requests().at(0);
    EXPECT_EQ(request.method, "GET");
    EXPECT_EQ(request.url, "https://places.example.org/osm/search?format=jsonv2&addressdetails=1&extratags=1&limit=25"
                           "&q=Caf%C3%A9%20%26%20Bar%2C%20100%25%20M%C3%BCnchen");
    EXPECT_EQ(request.headers.at("User-Agent"), "BrindlefoxAppleBridge/1.2");
    EXPECT_EQ(request.headers.at("Accept-Language"), "de-AT");
    EXPECT_EQ(request.timeout, 10s);
    EXPECT_EQ(request.body, "");
}

TEST_F(Nominatim, ARegionBecomesAViewboxThatLeavesNothingOut) {
    client.willAnswer(200, "[]");
    search("Bar", MapRegion{{0, 10}, 50'000, 50'000});
    EXPECT_THAT(client.requests()[0].url, HasSubstr("&viewbox=9.775422,-0.224578,10.224578,0.224578&bounded=0"));
    client.willAnswer(200, "[]");
    search("Bar", MapRegion{{90, 180}, 50'000, 50'000});
    EXPECT_THAT(client.requests()[1].url, HasSubstr(",180.000000,90.000000&bounded=0"));
}

TEST_F(Nominatim, BringsWhatIsKnownOfAPlace) {
    const auto items = answered(R"([{"place_id": 1, "lat": "48.1351", "lon": "11.5820", "name": "Zum Fuchs",
        "display_name": "Zum Fuchs, 5, Marienplatz, München, Bayern, 80331, Deutschland", "address": {"city": "München"},
        "extratags": {"phone": "+49 89 1; +49 89 2", "website": "https://fuchs.example/"}}])");
    const MapItem expected{"Zum Fuchs",
                           {48.1351, 11.582},
                           "Zum Fuchs, 5, Marienplatz, München, Bayern, 80331, Deutschland",
                           "+49 89 1",
                           "https://fuchs.example/"};
    EXPECT_THAT(items, ElementsAre(expected));
}

TEST_F(Nominatim, KeepsTheServersOrder) {
    const auto items = answered(R"([{"lat":"1","lon":"1","name":"b"},{"lat":"1","lon":"1","name":"a"}])");
    ASSERT_EQ(items.size(), 2U);
    EXPECT_EQ(items[0].name, "b");
}

TEST_F(Nominatim, APlaceMayHaveNothingButACoordinate) {
    EXPECT_THAT(answered(R"([{"lat":"-90","lon":"180","name":"","display_name":null,"extratags":null}])"),
                ElementsAre(MapItem{std::nullopt, {-90, 180}, std::nullopt, std::nullopt, std::nullopt}));
    EXPECT_THAT(answered(R"([{"lat":1.5,"lon":-2}])"),
                ElementsAre(MapItem{std::nullopt, {1.5, -2}, std::nullopt, std::nullopt, std::nullopt}));
}

TEST_F(Nominatim, OlderServersSayTheNameInFrontOfTheAddress) {
    EXPECT_EQ(answered(R"([{"lat":"1","lon":"1","display_name":"Fuchs, Wald"}])").at(0).name, "Fuchs");
}

TEST_F(Nominatim, PhonesAndWebAddressesHaveSeveralTags) {
    const auto item = [&](const std::string& tags) {
        return answered(R"([{"lat":"1","lon":"1","extratags":{)" + tags + "}}]").at(0);
    };
    EXPECT_EQ(item(R"("contact:phone":"1")").phoneNumber, "1");
    EXPECT_EQ(item(R"("contact:phone":"1","phone":"2")").phoneNumber, "2");
    EXPECT_EQ(item(R"("phone":" ; 3")").phoneNumber, std::nullopt);
    EXPECT_EQ(item(R"("phone":5)").phoneNumber, std::nullopt);
    EXPECT_EQ(item(R"("contact:website":"http://a.example")").url, "http://a.example");
    EXPECT_EQ(item(R"("url":"HTTPS://b.example/x?y#z")").url, "HTTPS://b.example/x?y#z");
    EXPECT_EQ(item(R"("website":"www.c.example","url":"http://c.example")").url, "http://c.example");
    EXPECT_EQ(item(R"("website":"http://d.example; http://e.example")").url, "http://d.example");
    for (const auto* text : {"www.c.example", "javascript:alert(1)", "ftp://c.example", "http://", "https:///x",
                             "http://a b", "/x", "mailto:a@b", "http://?x"})
        EXPECT_EQ(item(std::string(R"("website":")") + text + "\"").url, std::nullopt) << text;
}

TEST_F(Nominatim, NothingFoundIsAnEmptyList) {
    EXPECT_THAT(answered("[]"), IsEmpty());
}

TEST_F(Nominatim, WhatTheServerRefusesIsToldInWords) {
    EXPECT_THAT(failure(429, ""), HasSubstr("wants fewer requests"));
    EXPECT_THAT(failure(500, "<html>"), HasSubstr("has trouble of its own (HTTP 500)"));
    EXPECT_THAT(failure(503, "[]"), HasSubstr("has trouble of its own (HTTP 503)"));
    EXPECT_THAT(failure(403, ""), HasSubstr("does not answer us (HTTP 403)"));
    EXPECT_THAT(failure(404, "[]"), HasSubstr("Is its address right?"));
    EXPECT_THAT(failure(414, ""), HasSubstr("HTTP 414"));
    EXPECT_THAT(failure(301, ""), HasSubstr("another address"));
    EXPECT_THAT(failure(204, ""), HasSubstr("HTTP 204"));
}

TEST_F(Nominatim, AnAnswerThatMakesNoSenseIsAnErrorAndNotAnEmptyList) {
    for (const auto* body : {"",
                             "<html><body>Welcome</body></html>",
                             "null",
                             "{}",
                             "{\"error\":\"Unable to geocode\"}",
                             "[",
                             "[{\"lat\":\"1\"",
                             "[{\"lat\":\"1\",\"lon\":\"1\"}",
                             "[1]",
                             "[null]",
                             "[[]]",
                             "[{}]",
                             R"([{"lat":"abc","lon":"1"}])",
                             R"([{"lat":"1x","lon":"1"}])",
                             R"([{"lat":"","lon":"1"}])",
                             R"([{"lat":" 1","lon":"1"}])",
                             R"([{"lat":"nan","lon":"1"}])",
                             R"([{"lat":NaN,"lon":1}])",
                             R"([{"lat":"inf","lon":"1"}])",
                             R"([{"lat":"90.5","lon":"1"}])",
                             R"([{"lat":"1","lon":"-180.5"}])",
                             R"([{"lat":null,"lon":"1"}])",
                             R"([{"lat":true,"lon":"1"}])",
                             R"([{"lat":"1","lon":["1"]}])",
                             R"([{"lat":"1","lon":"1","name":5}])",
                             R"([{"lat":"1","lon":"1","display_name":{}}])",
                             R"([{"lat":"1","lon":"1","extratags":"none"}])",
                             "[\"\xff\"]",
                             "[{\"lat\":\"1\",\"lon\":\"1e999\"}]"})
        EXPECT_THAT(failure(200, body), HasSubstr("can't be understood")) << body;
    EXPECT_THAT(failure(200, std::string(100'000, '[')), HasSubstr("can't be understood"));
}

TEST_F(Nominatim, AClientsFailureIsTold) {
    client.willFail("Could not resolve host");
    EXPECT_THAT(failure(places), AllOf(HasSubstr("https://places.example.org/osm/"), HasSubstr("Could not resolve")));
}

TEST_F(Nominatim, AnAddressThatIsNoneIsToldAndNobodyIsAsked) {
    for (const auto* url :
         {"", "places.example.org", "ftp://a", "file:///etc/passwd", "http://", "https:///x", "http://a/?q=1",
          "http://a/#x", "http://user:password@a", "http://a b/", "http://a\r\nX: 1"}) {
        NominatimSearch elsewhere(client, time, [this](std::chrono::milliseconds length) { return time.pause(length); },
                                  {url, "a", "b"});
        EXPECT_THAT(failure(elsewhere), HasSubstr("The address of the places server is none")) << url;
    }
    EXPECT_THAT(client.requests(), IsEmpty());
}

TEST_F(Nominatim, SaysWhichServerAndWhoseDataItIs) {
    EXPECT_THAT(places.description(), AllOf(HasSubstr("places.example.org"), HasSubstr("OpenStreetMap contributors")));
}

// With a hand on the clock.
class NominatimTurns : public testing::Test {
protected:
    using Search = Task<std::vector<MapItem>>;

    Search begun(const std::string& query) {
        auto task = places.search({query, std::nullopt});
        task.start();
        return task;
    }
    std::vector<std::string> asked() const {
        std::vector<std::string> queries;
        for (const auto& request : client.requests())
            queries.push_back(request.url.substr(request.url.rfind('=') + 1));
        return queries;
    }

    ScriptedHTTPClient client;
    ManualTime time{ManualTime::Passes::byHand};
    NominatimSearch places{client,
                           time,
                           [this](std::chrono::milliseconds length) { return time.pause(length); },
                           {"http://places.example.org", "a", "b"}};
};

TEST_F(NominatimTurns, ComeOnceASecondInTheOrderOfComing) {
    for (int number = 0; number < 3; ++number)
        client.willAnswer(200, "[]");
    const auto first = begun("a");
    EXPECT_TRUE(first.done());
    time.advance(300ms);
    const auto second = begun("b");
    const auto third = begun("c");
    EXPECT_THAT(asked(), ElementsAre("a"));
    time.advance(699ms);
    EXPECT_THAT(asked(), ElementsAre("a"));
    time.advance(1ms);
    EXPECT_THAT(asked(), ElementsAre("a", "b"));
    EXPECT_TRUE(second.done());
    time.advance(999ms);
    EXPECT_FALSE(third.done());
    time.advance(1ms);
    EXPECT_THAT(asked(), ElementsAre("a", "b", "c"));
    EXPECT_TRUE(third.done());
}

TEST_F(NominatimTurns, NobodyWaitsAfterAQuietSecond) {
    client.willAnswer(200, "[]");
    client.willAnswer(200, "[]");
    const auto first = begun("a");
    time.advance(1000ms);
    EXPECT_TRUE(begun("b").done());
}

TEST_F(NominatimTurns, ASearchThatIsDroppedLeavesTheQueue) {
    client.willAnswer(200, "[]");
    client.willAnswer(200, "[]");
    const auto first = begun("a");
    auto second = begun("b");
    auto third = begun("c");
    const auto fourth = begun("d");
    third = {};
    second = {};
    EXPECT_EQ(time.sleeping(), 1U);
    time.advance(1000ms);
    EXPECT_THAT(asked(), ElementsAre("a", "d"));
    EXPECT_TRUE(fourth.done());
}

TEST_F(NominatimTurns, TheNextLeavesOnlyWhenTheAnswerHasCome) {
    client.willAnswer(200, "[]");
    client.hold();
    const auto first = begun("a");
    const auto second = begun("b");
    time.advance(5000ms);
    EXPECT_EQ(client.waiting(), 1U);
    EXPECT_FALSE(second.done());
    client.releaseOne();
    EXPECT_TRUE(first.done());
    EXPECT_EQ(client.waiting(), 1U);
    client.releaseOne();
    EXPECT_TRUE(second.done());
}

TEST_F(NominatimTurns, ASearchThatIsDroppedHangsUp) {
    client.hold();
    auto first = begun("a");
    EXPECT_EQ(client.waiting(), 1U);
    first = {};
    EXPECT_EQ(client.waiting(), 0U);
}

TEST_F(NominatimTurns, AFailureTakesATurnLikeAnyOther) {
    client.willFail("gone");
    auto first = begun("a");
    EXPECT_THROW(first.take(), PlatformError);
    EXPECT_FALSE(begun("b").done());
}

// Over a real connection.
class NominatimOverHTTP : public testing::Test {
protected:
    std::string failure() {
        try {
            return std::to_string(loop.runUntilDone(places.search({"London", std::nullopt})).size()) + " found";
        } catch (const PlatformError& error) {
            return error.what();
        }
    }

    EventLoop loop;
    StandInNominatim server{smallWorld()};
    OverHTTP places{loop, server.url()};
};

TEST_F(NominatimOverHTTP, SaysWhoAsks) {
    EXPECT_EQ(failure(), "2 found");
    const auto request = server.received().at(0);
    EXPECT_EQ(request.headers.at("user-agent"), "BrindlefoxAppleBridge/1.2");
    EXPECT_EQ(request.headers.at("accept-language"), "de-AT");
    EXPECT_THAT(request.path, testing::StartsWith("/osm/search?format=jsonv2&"));
}

TEST_F(NominatimOverHTTP, HalfAnAnswerIsAnError) {
    server.answerWith("HTTP/1.1 200 OK\r\nContent-Length: 500\r\n\r\n[]");
    EXPECT_THAT(failure(), HasSubstr("gave no answer"));
}

TEST_F(NominatimOverHTTP, AnAnswerOfMoreThanAMebibyteIsAnError) {
    server.answerWith("HTTP/1.1 200 OK\r\nContent-Length: 2000002\r\n\r\n[" + std::string(2'000'000, ' ') + "]");
    EXPECT_THAT(failure(), HasSubstr("too large"));
}

TEST_F(NominatimOverHTTP, WhatIsNotHTTPIsAnError) {
    server.answerWith("SSH-2.0-OpenSSH_9.2\r\n");
    EXPECT_THAT(failure(), HasSubstr("gave no answer"));
}

} // namespace
} // namespace bridge
