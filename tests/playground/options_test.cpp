#include "tools/playground/options.h"

#include <gtest/gtest.h>

namespace bridge::playground {
namespace {

using Kind = Choice::Kind;

TEST(Options, DefaultToEverythingInAThrowAwayProfile) {
    const auto options = readOptions({});
    EXPECT_FALSE(options.help);
    EXPECT_FALSE(options.serve);
    EXPECT_FALSE(options.unpaired);
    EXPECT_EQ(options.profile, std::nullopt);
    EXPECT_EQ(options.capabilities.kind, Kind::all);
    EXPECT_EQ(options.calendars.kind, Kind::all);
    EXPECT_EQ(options.reminderLists.kind, Kind::all);
    EXPECT_EQ(options.permissions.size(), 5U);
    for (const auto& [service, status] : options.permissions)
        EXPECT_EQ(status, 3); // granted, in everybody's numbers
}

TEST(Options, AreReadInAnyOrder) {
    const auto options = readOptions({"--unpaired", "--reminder-lists", "keep", "--permission", "music=denied",
                                      "--calendars", "none", "--profile", "--serve", "--serve"});
    EXPECT_TRUE(options.serve);
    EXPECT_TRUE(options.unpaired);
    EXPECT_EQ(options.profile, "--serve");
    EXPECT_EQ(options.calendars.kind, Kind::none);
    EXPECT_EQ(options.reminderLists.kind, Kind::keep);
}

TEST(Options, NameCapabilities) {
    EXPECT_EQ(readOptions({"--capabilities", "none"}).capabilities.kind, Kind::none);
    EXPECT_EQ(readOptions({"--capabilities", "keep"}).capabilities.kind, Kind::keep);
    const auto named = readOptions({"--capabilities", "files.list,maps.directions"}).capabilities;
    EXPECT_EQ(named.kind, Kind::named);
    EXPECT_EQ(named.names, (std::vector<std::string>{"files.list", "maps.directions"}));
}

TEST(Options, TurnStatesIntoTheNumbersOfEachService) {
    const auto options = readOptions({"--permission", "calendar=denied", "--permission", "music=denied", "--permission",
                                      "contacts=unavailable", "--permission", "location=unknown"});
    EXPECT_EQ(options.permissions.at(PrivacyService::calendar), 2);
    EXPECT_EQ(options.permissions.at(PrivacyService::music), 1);
    EXPECT_EQ(options.permissions.at(PrivacyService::contacts), std::nullopt);
    EXPECT_EQ(mapLocationStatus(options.permissions.at(PrivacyService::location).value()),
              BridgePermissionState::unknown);
    EXPECT_EQ(options.permissions.at(PrivacyService::reminders), 3);
}

TEST(Options, AskForHelp) {
    EXPECT_TRUE(readOptions({"--help"}).help);
    EXPECT_TRUE(readOptions({"--serve", "-h"}).help);
}

TEST(Options, AreAllInTheHelp) {
    for (const auto* option : {"--serve", "--profile", "--capabilities", "--calendars", "--reminder-lists",
                               "--permission", "--import", "--unpaired"})
        EXPECT_NE(std::string_view(usage).find(option), std::string_view::npos) << option;
}

} // namespace
} // namespace bridge::playground
