#include "app/local_searches.h"

#include "adapters/posix/system_clock.h"
#include "base/platform_error.h"
#include "tests/fakes/scripted_http_client.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace bridge {
namespace {

using testing::HasSubstr;

class LocalSearches : public testing::Test {
protected:
    std::vector<MapItem> found(LocalSearch& places, const std::string& query) {
        return loop.runUntilDone(places.search({query, std::nullopt}));
    }

    EventLoop loop;
    ScriptedHTTPClient client;
    SystemClock clock;
};

TEST_F(LocalSearches, WithoutAServerTheFileThatComesAlongIsSearched) {
    const auto places = openLocalSearch(loop, client, clock, std::nullopt);
    EXPECT_THAT(places->description(), HasSubstr("GeoNames"));
#ifdef HAVE_PLACES
    EXPECT_EQ(found(*places, "Lisboa").at(0).title, "Lisbon, Portugal");
#else
    EXPECT_THROW(found(*places, "Lisboa"), PlatformError);
#endif
    EXPECT_TRUE(client.requests().empty());
}

TEST_F(LocalSearches, AServerIsToldWhoAsks) {
    const auto places = openLocalSearch(loop, client, clock, "https://places.example.org");
    client.willAnswer(200, "[]");
    EXPECT_TRUE(found(*places, "Lisboa").empty());
    EXPECT_THAT(client.requests().at(0).headers.at("User-Agent"),
                testing::MatchesRegex("BrindlefoxAppleBridge/[0-9.]+"));
}

} // namespace
} // namespace bridge
