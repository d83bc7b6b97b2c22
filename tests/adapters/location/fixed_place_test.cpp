#include "adapters/location/fixed_place.h"

#include <gmock/gmock.h>

namespace bridge {
namespace {

class StandingClock : public Clock {
public:
    Date now() const override { return {1786706921}; }
    std::chrono::milliseconds uptime() const override { return {}; }
};

LocationFix locate(FixedPlace place) {
    auto task = place.locate();
    task.start();
    return task.take();
}

std::string failureOf(FixedPlace place) {
    try {
        locate(std::move(place));
    } catch (const PlatformError& error) {
        return error.what();
    }
    return "";
}

const StandingClock clock;

TEST(FixedPlace, IsWhereTheUserSaidAndNow) {
    EXPECT_EQ(locate({MapCoordinate{-33.86, 151.21}, "services.json", "", clock}),
              (LocationFix{-33.86, 151.21, 100, 0, {1786706921}}));
}

TEST(FixedPlace, ThatNobodySetSaysHowToSetIt) {
    EXPECT_THAT(failureOf({std::nullopt, "/home/ana/services.json", "", clock}),
                testing::AllOf(testing::StartsWith("Nothing here finds the location"),
                               testing::HasSubstr("{\"location\": {\"latitude\": 52.52, \"longitude\": 13.405}}"),
                               testing::HasSubstr("into /home/ana/services.json and start")));
}

TEST(FixedPlace, ThatWasSetWronglySaysWhatIsWrong) {
    EXPECT_THAT(failureOf({std::nullopt, "services.json", "services.json, .location: expected an object", clock}),
                testing::StartsWith("services.json, .location: expected an object. Nothing here"));
}

TEST(FixedPlace, SaysWhereItComesFrom) {
    EXPECT_EQ(FixedPlace(MapCoordinate{1, 2}, "/home/ana/services.json", "", clock).description(),
              "what /home/ana/services.json says");
    EXPECT_EQ(FixedPlace(std::nullopt, "services.json", "", clock).description(),
              "nowhere, and services.json says none");
    EXPECT_EQ(
        FixedPlace(std::nullopt, "services.json", "services.json, .location: expected an object", clock).description(),
        "nowhere. services.json, .location: expected an object");
}

} // namespace
} // namespace bridge
