#include "tests/playground/playground_process.h"
#include "tools/valhalla_server/valhalla_server.h"

#include <csignal>
#include <gmock/gmock.h>

namespace bridge {
namespace {

constexpr const char* onFoot = R"({"originLatitude":47.141,"originLongitude":9.5215,"destinationLatitude":47.0667,)"
                               R"("destinationLongitude":9.502,"transport":"WALKING"})";

double number(const JSONValue& record, const char* name) {
    return *record.object()->at(name).number();
}

TEST(Maps, PutTheDeviceInVaduz) {
    const TemporaryFolder temporary;
    const ServingPlayground playground(temporary);
    const auto place = playground.call("location.current").result();
    EXPECT_EQ(number(place, "latitude"), 47.141);
    EXPECT_EQ(number(place, "longitude"), 9.5215);
}

TEST(Maps, DoNotTellAPlaceThatNobodyMayKnow) {
    const TemporaryFolder temporary;
    const ServingPlayground playground(temporary, {"--permission", "location=denied"});
    EXPECT_EQ(playground.call("location.current").code(), "permission_denied");
}

TEST(Maps, KnowTheWaysAroundThere) {
    ASSERT_EQ(ValhallaServer::hindrance(), "");
    const TemporaryFolder temporary;
    const ServingPlayground playground(temporary);
    const auto routes = playground.call("maps.directions", onFoot).result();
    ASSERT_GE(routes.array()->size(), 2U);
    EXPECT_NEAR(number(routes.array()->front(), "distanceMeters"), 9042, 500);
}

TEST(Maps, AreThoseThatTheProfileNames) {
    const TemporaryFolder temporary;
    std::filesystem::create_directory(temporary / "kept");
    putFile(temporary / "kept/services.json",
            R"({"location":{"latitude":-33.9,"longitude":151.2},"directionsServer":"nowhere"})");
    const ServingPlayground playground(temporary, {"--profile", temporary.file("kept")});
    EXPECT_EQ(number(playground.call("location.current").result(), "latitude"), -33.9);
    EXPECT_THAT(playground.call("maps.directions", onFoot).message(),
                testing::HasSubstr("services.json, .directionsServer: expected an address"));
    EXPECT_EQ(getFile(temporary / "kept/services.json").find("47.141"), std::string::npos);
}

TEST(Maps, LeaveNoServerBehind) {
    const TemporaryFolder temporary;
    ServingPlayground playground(temporary);
    playground.call("maps.directions", onFoot);
    EXPECT_EQ(playground.end(SIGTERM).status, 0);
    EXPECT_TRUE(std::filesystem::is_empty(temporary.path()));
}

} // namespace
} // namespace bridge
