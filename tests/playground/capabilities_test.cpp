#include "tests/playground/playground_process.h"

#include <csignal>
#include <gtest/gtest.h>
#include <set>

namespace bridge {
namespace {

using Names = std::set<std::string>;

class Capabilities : public testing::Test {
protected:
    // What is switched on according to the bridge itself after a start with these words; the profile is kept.
    Names enabledWith(const std::vector<std::string>& choice) {
        std::vector<std::string> words{"--profile", profile};
        words.insert(words.end(), choice.begin(), choice.end());
        ServingPlayground playground(temporary, words);
        const auto permissions = playground.call("permissions.get").result();
        const auto& states = *permissions.object()->at("capabilities").object();
        EXPECT_EQ(states.size(), 47U);
        Names enabled;
        for (const auto& [name, state] : states)
            if (*state.boolean()) enabled.insert(name);
        EXPECT_EQ(playground.end(SIGTERM).status, 0);
        return enabled;
    }
    void seedDefaults(const char* content) {
        std::filesystem::create_directory(profile);
        putFile(profile + "/defaults.json", content);
    }
    JSONValue stored() const {
        return parseJSON(getFile(profile + "/defaults.json")).object()->at("appleBridge.enabledCapabilities.v1");
    }

    TemporaryFolder temporary;
    const std::string profile = temporary.file("kept");
};

TEST_F(Capabilities, AreAllOnUnlessTold) {
    EXPECT_EQ(enabledWith({}).size(), 47U);
}

TEST_F(Capabilities, AreAllOnOrAllOff) {
    EXPECT_EQ(enabledWith({"--capabilities", "none"}), Names());
    EXPECT_EQ(stored(), parseJSON("[]"));
    EXPECT_EQ(enabledWith({"--capabilities", "all"}).size(), 47U);
    EXPECT_EQ(stored().array()->size(), 47U);
}

TEST_F(Capabilities, AreTheNamedOnesAlone) {
    const Names two{"files.list", "files.read"};
    EXPECT_EQ(enabledWith({"--capabilities", "files.list,files.read"}), two);
    EXPECT_EQ(stored(), parseJSON(R"(["files.list","files.read"])"));
    EXPECT_EQ(enabledWith({"--capabilities", "maps.directions"}), Names{"maps.directions"});
}

TEST_F(Capabilities, AreKeptWhenAskedTo) {
    enabledWith({"--capabilities", "music.playback,location.current"});
    EXPECT_EQ(enabledWith({"--capabilities", "keep"}), (Names{"location.current", "music.playback"}));
}

TEST_F(Capabilities, KeptOfAFreshProfileAreNone) {
    EXPECT_EQ(enabledWith({"--capabilities", "keep"}), Names());
}

TEST_F(Capabilities, OfAnOlderCatalogueAreTranslated) {
    seedDefaults(R"({"appleBridge.enabledCapabilities.v1":["calendar.read","files.list","junk"]})");
    EXPECT_EQ(enabledWith({"--capabilities", "keep"}),
              (Names{"calendar.calendars.read", "calendar.events.read", "files.list"}));
    EXPECT_EQ(stored(), parseJSON(R"(["calendar.calendars.read","calendar.events.read","files.list"])"));
}

TEST_F(Capabilities, AreAllOnWhereAnOlderVersionWasInUse) {
    for (const auto* seed : {R"({"authorizedFileRoots.v1":[]})", R"({"appleBridge.allowedCalendarIDs":[]})",
                             R"({"appleBridge.allowedReminderListIDs":["x"]})",
                             R"({"authorizedFileRoots.v1":"W10=","appleBridge.enabledCapabilities.v1":5})"}) {
        seedDefaults(seed);
        EXPECT_EQ(enabledWith({"--capabilities", "keep"}).size(), 47U) << seed;
        EXPECT_EQ(stored().array()->size(), 47U);
        std::filesystem::remove_all(profile);
    }
}

TEST_F(Capabilities, DecideWhatIsRefused) {
    const ServingPlayground playground(temporary, {"--capabilities", "files.list"});
    const auto root = R"({"rootID":")" + playground.rootID();
    EXPECT_EQ(playground.call("files.list", root + R"(","path":""})").status, 200);
    const auto refused = playground.call("files.read_text", root + R"(","path":"Welcome.txt"})");
    EXPECT_EQ(refused.status, 403);
    EXPECT_EQ(refused.code(), "capability_denied");
}

} // namespace
} // namespace bridge
