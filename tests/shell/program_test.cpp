#include "tests/shell/bridge_program.h"
#include "tests/shell/screen.h"

#include <gtest/gtest.h>

namespace bridge {
namespace {

// The program in use. Its user has no session bus, so the icon is one of the X server's tray.
struct Program : testing::Test {
    TemporaryFolder home;

    BridgeProgram start(const BridgeProgram::Variables& variables, const std::vector<std::string>& arguments = {}) {
        return BridgeProgram(home, variables, arguments);
    }
};

TEST_F(Program, ServesWithoutADisplayAndSaysSoOnce) {
    auto bridge = start({});
    ASSERT_TRUE(bridge.isListening());
    bridge.send(SIGTERM);
    EXPECT_EQ(bridge.exitCode(), 0);
    const std::string said = "There is no display: the bridge serves without a dashboard.";
    const auto first = bridge.log().find(said);
    ASSERT_NE(first, std::string::npos) << bridge.log();
    EXPECT_EQ(bridge.log().find(said, first + 1), std::string::npos);
}

TEST_F(Program, TakesADisplayThatDoesNotAnswerForNone) {
    for (const BridgeProgram::Variables& dead : {BridgeProgram::Variables{{"DISPLAY", ":4711"}},
                                                 {{"WAYLAND_DISPLAY", "wayland-7"}},
                                                 {{"DISPLAY", "nonsense"}}}) {
        auto bridge = start(dead);
        ASSERT_TRUE(bridge.isListening()) << bridge.log();
        bridge.send(SIGTERM);
        EXPECT_EQ(bridge.exitCode(), 0) << bridge.log();
    }
}

TEST_F(Program, EndsAtOnceWhenTheSameUserHasItRunningWithoutADisplay) {
    auto bridge = start({});
    ASSERT_TRUE(bridge.isListening());
    auto second = start({});
    EXPECT_EQ(second.exitCode(), 0);
    EXPECT_NE(second.log().find("It is running already, without a display."), std::string::npos);
}

TEST_F(Program, RefusesWordsThatItDoesNotKnow) {
    EXPECT_EQ(start({}, {"--frobnicate"}).exitCode(), 2);
}

struct ProgramOnAScreen : Program {
    std::optional<Screen> screen;

    void SetUp() override {
        if (const auto hindrance = Screen::hindrance(); !hindrance.empty()) GTEST_SKIP() << hindrance;
        screen.emplace(home);
    }
    BridgeProgram start(const std::vector<std::string>& arguments = {}) {
        return Program::start({{"DISPLAY", screen->display()}}, arguments);
    }
    void startDesktop() {
        screen->startWindowManager();
        screen->startPanel();
    }
    WindowPlace icon() {
        std::optional<WindowPlace> found;
        EXPECT_TRUE(becomesTrue([&] { return (found = screen->icon()).has_value(); })) << "no icon in the panel";
        return found.value_or(WindowPlace());
    }
    WindowPlace popover() {
        std::optional<WindowPlace> found;
        EXPECT_TRUE(becomesTrue([&] { return (found = screen->popover()).has_value(); })) << "no popover";
        return found.value_or(WindowPlace());
    }
    bool popoverGoes() {
        return becomesTrue([&] { return !screen->popover(); });
    }
};

TEST_F(ProgramOnAScreen, OpensItsDashboardByAClickOnTheIconAndClosesItByTheNext) {
    startDesktop();
    auto bridge = start({"--background"});
    ASSERT_TRUE(bridge.isListening());
    const auto place = icon();
    screen->click(place);
    const auto shown = popover();
    EXPECT_EQ(shown.width, 640);
    EXPECT_EQ(shown.height, 780);
    EXPECT_LE(shown.y + shown.height, place.y) << "it is above the icon";
    EXPECT_LE(shown.x + shown.width, 1280);
    EXPECT_GT(shown.x + shown.width, place.x) << "and beside it";
    screen->click(place);
    EXPECT_TRUE(popoverGoes());
    screen->click(place);
    EXPECT_EQ(popover(), shown);
    bridge.send(SIGTERM);
    EXPECT_EQ(bridge.exitCode(), 0) << bridge.log();
}

TEST_F(ProgramOnAScreen, HidesItsDashboardForEscapeAndForAnotherWindow) {
    startDesktop();
    auto bridge = start({"--background"});
    ASSERT_TRUE(bridge.isListening());
    const auto place = icon();
    screen->click(place);
    popover();
    // The first may come before the keyboard does.
    EXPECT_TRUE(becomesTrue([&] {
        screen->press("Escape");
        return !screen->popover();
    }));
    screen->click(place);
    popover();
    screen->openAnotherWindow();
    EXPECT_TRUE(popoverGoes());
}

TEST_F(ProgramOnAScreen, PutsItsIconIntoAPanelThatComesLate) {
    screen->startWindowManager();
    auto bridge = start({"--background"});
    ASSERT_TRUE(bridge.isListening());
    screen->startPanel();
    screen->click(icon());
    popover();
}

TEST_F(ProgramOnAScreen, ShowsItsDashboardInTheMiddleWhenThereIsNoPanelForAnIcon) {
    screen->startWindowManager();
    auto bridge = start();
    ASSERT_TRUE(bridge.isListening());
    const auto shown = popover();
    EXPECT_EQ(shown.x, 320) << "in the middle";
}

TEST_F(ProgramOnAScreen, ShowsItsDashboardOnceToWhomStartsItAlsoBesideAnIcon) {
    startDesktop();
    auto bridge = start();
    ASSERT_TRUE(bridge.isListening());
    icon();
    popover();
    EXPECT_TRUE(becomesTrue([&] {
        screen->press("Escape");
        return !screen->popover();
    }));
}

TEST_F(ProgramOnAScreen, ShowsNothingByItselfWhenTheSystemStartsIt) {
    screen->startWindowManager();
    auto bridge = start({"--background"});
    ASSERT_TRUE(bridge.isListening());
    // What it had to do by itself it has done when it has answered this.
    EXPECT_EQ(start({"--background"}).exitCode(), 0);
    EXPECT_FALSE(screen->popover());
    EXPECT_EQ(start().exitCode(), 0);
    popover();
}

TEST_F(ProgramOnAScreen, ShowsTheDashboardOfTheOneThatRunsWhenStartedAgain) {
    startDesktop();
    auto bridge = start({"--background"});
    ASSERT_TRUE(bridge.isListening());
    icon();
    EXPECT_EQ(start().exitCode(), 0);
    popover();
    EXPECT_EQ(start().exitCode(), 0);
    popover();
}

TEST_F(ProgramOnAScreen, TakesThePlaceOfOneWithoutADisplay) {
    auto hidden = Program::start({});
    ASSERT_TRUE(hidden.isListening());
    startDesktop();
    auto bridge = start();
    ASSERT_TRUE(bridge.isListening());
    EXPECT_EQ(hidden.exitCode(), 0);
    icon();
}

TEST_F(ProgramOnAScreen, StartsAgainAfterItWasKilled) {
    startDesktop();
    {
        auto killed = start();
        ASSERT_TRUE(killed.isListening());
        killed.send(SIGKILL);
        EXPECT_EQ(killed.exitCode(), 128 + SIGKILL);
    }
    auto bridge = start();
    ASSERT_TRUE(bridge.isListening());
    icon();
}

TEST_F(ProgramOnAScreen, EndsForTheSystemWithItsDashboardOpen) {
    screen->startWindowManager();
    auto bridge = start();
    ASSERT_TRUE(bridge.isListening());
    popover();
    bridge.send(SIGTERM);
    EXPECT_EQ(bridge.exitCode(), 0) << bridge.log();
}

TEST_F(ProgramOnAScreen, SaysInAWindowWhyItCannotStart) {
    screen->startWindowManager();
    putFile(home / "data", "no folder");
    auto bridge = start();
    const auto window = popover();
    EXPECT_NE(window.height, 780) << "it is not the dashboard";
    EXPECT_TRUE(becomesTrue([&] {
        screen->press("Escape");
        return !screen->popover();
    }));
    EXPECT_EQ(bridge.exitCode(), 1);
    EXPECT_NE(bridge.log().find("Not a directory"), std::string::npos) << bridge.log();
}

TEST_F(ProgramOnAScreen, LoadsNoDashboardThatAnUpdateHasBrought) {
    startDesktop();
    const auto installed = home / "bin/brindlefox-apple-bridge";
    std::filesystem::create_directory(home / "bin");
    std::filesystem::copy_file(BridgeProgram::path(), installed);
    auto bridge = BridgeProgram(home, {{"DISPLAY", screen->display()}}, {"--background"}, installed);
    ASSERT_TRUE(bridge.isListening());
    const auto place = icon();
    putFile(home / "newer", "another version");
    std::filesystem::rename(home / "newer", installed);
    screen->click(place);
    EXPECT_NE(popover().height, 780) << "it is not the dashboard";
    bridge.send(SIGTERM);
    EXPECT_EQ(bridge.exitCode(), 0) << bridge.log();
    EXPECT_NE(bridge.log().find("was updated or removed while it was running"), std::string::npos) << bridge.log();
}

TEST_F(ProgramOnAScreen, ShowsNoWindowForItWhenTheSystemStartsIt) {
    putFile(home / "data", "no folder");
    EXPECT_EQ(start({"--background"}).exitCode(), 1);
}

TEST_F(ProgramOnAScreen, EndsWithOneWhenTheDisplayIsGone) {
    auto bridge = start();
    ASSERT_TRUE(bridge.isListening());
    screen->end();
    EXPECT_EQ(bridge.exitCode(), 1) << bridge.log();
    EXPECT_NE(bridge.log().find("The display is gone."), std::string::npos) << bridge.log();
}

} // namespace
} // namespace bridge
