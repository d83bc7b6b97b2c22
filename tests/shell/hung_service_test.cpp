#include "tests/shell/bridge_program.h"
#include "tests/shell/screen.h"
#include "tests/support/private_bus.h"

#include <gtest/gtest.h>

namespace bridge {
namespace {

auto* const bus = new PrivateBus; // GoogleTest's to delete
[[maybe_unused]] auto* const environment = testing::AddGlobalTestEnvironment(bus);

// Whether the keyring answers who comes to it, and only not what it is asked for.
enum class Keyring { letsIn, letsNobodyIn };

// The program while the keyring has been asked and does not answer.
struct ProgramWithAHungKeyring : testing::TestWithParam<Keyring> {
    TemporaryFolder home;
    std::optional<ChildProcess> keyring;

    void SetUp() override {
        if (!PrivateBus::isPossible()) GTEST_SKIP() << "dbus-daemon is not installed";
        if (!std::filesystem::exists("/usr/bin/python3")) GTEST_SKIP() << "python3 is not installed";
        std::vector<std::string> command{"/usr/bin/python3", BRIDGE_HUNG_KEYRING};
        if (GetParam() == Keyring::letsNobodyIn) command.emplace_back("lets nobody in");
        const std::map<std::string, std::string> variables{{"DBUS_SESSION_BUS_ADDRESS", bus->address()}};
        keyring.emplace(command, variables, "");
        ASSERT_EQ(keyring->readLine(), "ready");
    }
    BridgeProgram start(BridgeProgram::Variables variables) {
        variables["DBUS_SESSION_BUS_ADDRESS"] = bus->address();
        return BridgeProgram(home, variables, {});
    }
    void endsAtOnce(BridgeProgram& bridge) {
        bridge.send(SIGTERM);
        EXPECT_EQ(bridge.exitCode(), 0) << bridge.log();
        EXPECT_EQ(bridge.log().find("Listening"), std::string::npos) << "it has waited: " << bridge.log();
    }
};

INSTANTIATE_TEST_SUITE_P(Keyrings, ProgramWithAHungKeyring, testing::Values(Keyring::letsIn, Keyring::letsNobodyIn),
                         [](const auto& test) { return test.param == Keyring::letsIn ? "LetsIn" : "LetsNobodyIn"; });

TEST_P(ProgramWithAHungKeyring, EndsWithoutWaitingForIt) {
    auto bridge = start({});
    ASSERT_EQ(keyring->readLine(), "asked");
    endsAtOnce(bridge);
}

TEST_P(ProgramWithAHungKeyring, ShowsItsIconAndDashboardWithoutWaitingForIt) {
    if (const auto hindrance = Screen::hindrance(); !hindrance.empty()) GTEST_SKIP() << hindrance;
    Screen screen(home);
    screen.startWindowManager();
    screen.startPanel();
    auto bridge = start({{"DISPLAY", screen.display()}});
    ASSERT_EQ(keyring->readLine(), "asked");
    EXPECT_TRUE(becomesTrue([&] { return screen.icon() && screen.popover(); }));
    endsAtOnce(bridge);
}

} // namespace
} // namespace bridge
