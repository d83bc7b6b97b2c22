#include "adapters/geoclue/geoclue_source.h"

#include "tests/adapters/geoclue/private_system_bus.h"
#include "tests/adapters/geoclue/scripted_geoclue.h"

#include <algorithm>
#include <cmath>
#include <gmock/gmock.h>

namespace bridge {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::HasSubstr;
using Answer = ScriptedGeoClue::Answer;
using Place = ScriptedGeoClue::Place;
using Plan = ScriptedGeoClue::Plan;

class GeoClueSourceTest : public testing::Test {
protected:
    void SetUp() override {
        if (!PrivateBus::isPossible()) GTEST_SKIP() << "dbus-daemon is not installed";
    }
    void TearDown() override { bus.useIt(); }

    void open(std::chrono::milliseconds settling = 1h) {
        source = loop.runUntilDone(GeoClueSource::open(loop, {2min, settling}));
    }
    void begin(Plan plan, std::chrono::milliseconds settling = 1h) {
        geoclue.emplace(std::move(plan));
        open(settling);
        ASSERT_TRUE(source);
    }
    Task<LocationFix> started() {
        auto task = source->locate();
        task.start();
        return task;
    }
    LocationFix finished(Task<LocationFix> task) {
        while (!task.done())
            loop.waitOnce();
        return task.take();
    }
    LocationFix locate() { return finished(started()); }
    std::string failureOf(Task<LocationFix> task) {
        try {
            finished(std::move(task));
        } catch (const PlatformError& error) {
            return error.what();
        }
        return "";
    }
    std::string failure() { return failureOf(started()); }

    PrivateSystemBus& bus = PrivateSystemBus::instance();
    EventLoop loop;
    std::optional<ScriptedGeoClue> geoclue;
    std::unique_ptr<LocationSource> source;
    const std::string gone = "GeoClue ended before it found the location. Try again.";
};

TEST_F(GeoClueSourceTest, DoesNotOpenWithoutGeoClue) {
    open();
    EXPECT_FALSE(source);
}

TEST_F(GeoClueSourceTest, DoesNotOpenWithoutASystemBus) {
    setenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nonexistent/bus", 1);
    open();
    EXPECT_FALSE(source);
    setenv("DBUS_SYSTEM_BUS_ADDRESS", "🦊", 1);
    open();
    EXPECT_FALSE(source);
}

TEST_F(GeoClueSourceTest, OpensWhereTheBusWouldStartGeoClue) {
    const auto file = bus.serviceFolder() / "org.freedesktop.GeoClue2.service";
    putFile(file, "[D-BUS Service]\nName=org.freedesktop.GeoClue2\nExec=/bin/false\n");
    bus.reload();
    open();
    EXPECT_TRUE(source);
    EXPECT_THAT(failure(), HasSubstr("GeoClue"));
    std::filesystem::remove(file);
    bus.reload();
}

TEST_F(GeoClueSourceTest, FindsThePlaceAsOurselvesAsExactlyAsCanBe) {
    begin({.places = {{}}});
    EXPECT_EQ(locate(), (LocationFix{52.52, 13.405, 10, 0, {1786706921}}));
    geoclue->waitFor("DeleteClient");
    EXPECT_THAT(geoclue->calls(), ElementsAre("CreateClient", "DesktopId='brindlefox-apple-bridge'",
                                              "RequestedAccuracyLevel=8", "Start", "Read", "DeleteClient"));
    bus.waitUntil(PrivateBus::Owned::no, geoclue->caller());
}

TEST_F(GeoClueSourceTest, KnowsTheAltitudeWhereGeoClueDoes) {
    begin({.places = {{.altitude = -12.5}}});
    EXPECT_EQ(locate().altitude, -12.5);
}

TEST_F(GeoClueSourceTest, WaitsForAPlaceThatIsGoodToAHundredMetres) {
    begin({.places = {{.latitude = 1, .accuracy = 25'000}, {.latitude = 2, .accuracy = 101}}});
    auto asked = started();
    geoclue->waitFor("Start");
    EXPECT_FALSE(asked.done());
    geoclue->tell({.latitude = 3, .accuracy = 100});
    EXPECT_EQ(finished(std::move(asked)).latitude, 3);
}

TEST_F(GeoClueSourceTest, TakesTheBestThereWasWhenGeoClueEnds) {
    begin({});
    auto asked = started();
    geoclue->waitFor("Start");
    for (const double accuracy : {-1, 900, 500, 800, -1}) {
        const auto before = std::ranges::count(geoclue->calls(), "Read");
        geoclue->tell({.accuracy = accuracy});
        geoclue->waitFor("Read", before + 1);
    }
    EXPECT_FALSE(asked.done());
    geoclue.reset();
    EXPECT_EQ(finished(std::move(asked)).horizontalAccuracy, 500);
}

TEST_F(GeoClueSourceTest, TakesTheFirstPlaceWhenNothingBetterMayCome) {
    begin({.places = {{.latitude = 1, .accuracy = 25'000}}}, 0ms);
    EXPECT_EQ(locate().horizontalAccuracy, 25'000);
}

TEST_F(GeoClueSourceTest, PassesOverAPlaceThatHasGoneAgain) {
    begin({});
    auto asked = started();
    geoclue->waitFor("Start");
    geoclue->tell({.isGone = true});
    geoclue->tellNonsense();
    geoclue->tell({.latitude = 7});
    EXPECT_EQ(finished(std::move(asked)).latitude, 7);
}

TEST_F(GeoClueSourceTest, RefusesAPlaceThatIsNowhere) {
    for (const auto& place : {Place{.latitude = 91}, Place{.longitude = -180.5}, Place{.latitude = NAN}}) {
        geoclue.reset();
        begin({.places = {place}});
        EXPECT_EQ(failure(), "GeoClue found a location that is nowhere on Earth.");
    }
}

TEST_F(GeoClueSourceTest, RefusesAPlaceThatLacksADegree) {
    begin({.places = {{.lacksLongitude = true}}});
    EXPECT_NE(failure(), "");
}

TEST_F(GeoClueSourceTest, SaysWhereToAllowWhatGeoClueRefuses) {
    for (const auto& plan : {Plan{.start = Answer::refusal}, Plan{.createClient = Answer::refusal}}) {
        geoclue.reset();
        begin(plan);
        EXPECT_THAT(failure(), testing::AllOf(testing::StartsWith("GeoClue does not let Brindlefox Apple Bridge know"),
                                              HasSubstr("[brindlefox-apple-bridge]"), HasSubstr("not for you")));
    }
}

TEST_F(GeoClueSourceTest, LeavesNoClientBehindWhenItIsRefused) {
    begin({.start = Answer::refusal});
    failure();
    geoclue->waitFor("DeleteClient");
}

TEST_F(GeoClueSourceTest, LooksNoFurtherWhenNobodyWaits) {
    begin({});
    {
        auto dropped = started();
        geoclue->waitFor("Start");
    }
    geoclue->waitFor("DeleteClient");
    bus.waitUntil(PrivateBus::Owned::no, geoclue->caller());
}

TEST_F(GeoClueSourceTest, GivesUpAGeoClueThatMakesNoClientWhenNobodyWaits) {
    begin({.createClient = Answer::never});
    {
        auto dropped = started();
        geoclue->waitFor("CreateClient");
    }
    bus.waitUntil(PrivateBus::Owned::no, geoclue->caller());
}

TEST_F(GeoClueSourceTest, IsFreeForTheNextWhenOneWasDropped) {
    begin({.places = {{.accuracy = 25'000}}});
    {
        auto dropped = started();
        geoclue->waitFor("Start");
    }
    auto next = started();
    geoclue->waitFor("Start", 2);
    geoclue->tell({.latitude = 4});
    EXPECT_EQ(finished(std::move(next)).latitude, 4);
}

TEST_F(GeoClueSourceTest, DestroyingItWaitsForNobody) {
    begin({.createClient = Answer::never});
    {
        auto dropped = started();
        geoclue->waitFor("CreateClient");
    }
    source.reset();
}

TEST_F(GeoClueSourceTest, SaysWhenGeoClueEndsInTheMiddle) {
    begin({});
    auto asked = started();
    geoclue->waitFor("Start");
    geoclue.reset();
    EXPECT_EQ(failureOf(std::move(asked)), gone);
}

TEST_F(GeoClueSourceTest, SaysWhenGeoClueEndsDuringACall) {
    for (const auto& [plan, call] : {std::pair(Plan{.createClient = Answer::never}, "CreateClient"),
                                     std::pair(Plan{.start = Answer::never}, "Start")}) {
        begin(plan);
        auto asked = started();
        geoclue->waitFor(call);
        geoclue.reset();
        EXPECT_EQ(failureOf(std::move(asked)), gone) << call;
    }
}

TEST_F(GeoClueSourceTest, SaysWhenGeoClueIsThereNoMore) {
    begin({});
    geoclue.reset();
    EXPECT_THAT(failure(), HasSubstr("is not there any more"));
}

TEST_F(GeoClueSourceTest, SaysWhenTheSystemBusIsThereNoMore) {
    begin({});
    setenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nonexistent/bus", 1);
    EXPECT_THAT(failure(), testing::StartsWith("The system bus, where GeoClue finds the location, can't be reached: "));
}

TEST_F(GeoClueSourceTest, FindsThePlaceOfAGeoClueThatWasStartedAnew) {
    begin({});
    geoclue.reset();
    geoclue.emplace(Plan{.places = {{.latitude = 5}}});
    EXPECT_EQ(locate().latitude, 5);
}

} // namespace
} // namespace bridge
