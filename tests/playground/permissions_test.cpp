#include "tests/playground/playground_process.h"

#include <csignal>
#include <gtest/gtest.h>

namespace bridge {
namespace {

// Of calendar, reminders, contacts, music and location, according to the bridge.
std::vector<std::string> permissionsOf(const ServingPlayground& playground) {
    const auto answer = playground.call("permissions.get").result();
    std::vector<std::string> states;
    for (const auto* service : {"calendar", "reminders", "contacts", "music", "location"})
        states.push_back(*answer.object()->at(service).string());
    return states;
}

TEST(Permissions, AreGrantedUnlessTold) {
    const TemporaryFolder temporary;
    const ServingPlayground playground(temporary);
    EXPECT_EQ(permissionsOf(playground), std::vector<std::string>(5, "fullAccess"));
}

TEST(Permissions, AreWhatIsAsked) {
    const TemporaryFolder temporary;
    const ServingPlayground playground(temporary,
                                       {"--permission", "calendar=denied", "--permission", "music=notDetermined"});
    EXPECT_EQ(permissionsOf(playground),
              (std::vector<std::string>{"denied", "fullAccess", "fullAccess", "notDetermined", "fullAccess"}));
    const auto health = playground.health().result();
    EXPECT_EQ(*health.object()->at("permissions").object()->at("calendar").string(), "denied");
}

TEST(Permissions, TheLastWordCounts) {
    const TemporaryFolder temporary;
    const ServingPlayground playground(temporary,
                                       {"--permission", "contacts=denied", "--permission", "contacts=limited"});
    EXPECT_EQ(permissionsOf(playground).at(2), "limited");
}

TEST(Permissions, CanBeEveryStateThatAServiceKnows) {
    const std::vector<std::string> known[] = {
        {"notDetermined", "denied", "restricted", "unavailable", "unknown"},
        {"writeOnly", "fullAccess", "denied", "restricted", "unknown"},
        {"limited", "unavailable", "unknown", "notDetermined", "fullAccess"},
        {"denied", "restricted", "fullAccess", "unknown", "unavailable"},
        {"restricted", "denied", "notDetermined", "fullAccess", "unavailable"},
    };
    for (size_t round = 0; round < 5; ++round) {
        const TemporaryFolder temporary;
        std::vector<std::string> words;
        std::vector<std::string> expected;
        size_t index = 0;
        for (const auto* service : {"calendar", "reminders", "contacts", "music", "location"}) {
            expected.push_back(known[index++][round]);
            words.insert(words.end(), {"--permission", service + ("=" + expected.back())});
        }
        ServingPlayground playground(temporary, words);
        EXPECT_EQ(permissionsOf(playground), expected);
        EXPECT_EQ(playground.end(SIGTERM).status, 0);
    }
}

TEST(Permissions, AreGrantedAnewToAKeptProfile) {
    const TemporaryFolder temporary;
    const std::vector<std::string> words{"--profile", temporary.file("kept")};
    auto denying = words;
    denying.insert(denying.end(), {"--permission", "location=denied"});
    {
        ServingPlayground playground(temporary, denying);
        EXPECT_EQ(permissionsOf(playground).at(4), "denied");
        EXPECT_EQ(playground.end(SIGTERM).status, 0);
    }
    EXPECT_EQ(permissionsOf(ServingPlayground(temporary, words)).at(4), "fullAccess");
}

} // namespace
} // namespace bridge
