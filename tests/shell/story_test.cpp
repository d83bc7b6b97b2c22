#include "tests/shell/accessible_bus.h"
#include "tests/shell/bridge_program.h"
#include "tests/shell/screen.h"
#include "tools/agent_server/stand_in_agent_server.h"

#include <gtest/gtest.h>

namespace bridge {
namespace {

auto* const bus = new AccessibleBus; // GoogleTest's to delete
[[maybe_unused]] auto* const environment = testing::AddGlobalTestEnvironment(bus);

// A user with a screen reader, from the first start on; what he does the program must do.
struct Story : testing::Test {
    TemporaryFolder home;
    std::optional<StandInAgentServer> agentServer;
    std::optional<Screen> screen;
    std::optional<BridgeProgram> bridge;

    void SetUp() override {
        for (const auto& hindrance : {Screen::hindrance(), AccessibleBus::hindrance()})
            if (!hindrance.empty()) GTEST_SKIP() << hindrance;
        if (!std::filesystem::exists("/usr/bin/python3") || !ChildProcess::isInstalled("curl"))
            GTEST_SKIP() << "python3 or curl is not installed";
        agentServer.emplace(uint16_t{3000});
        screen.emplace(home);
        screen->startWindowManager();
    }
    BridgeProgram::Variables variables() const {
        return {{"DISPLAY", screen->display()},
                {"DBUS_SESSION_BUS_ADDRESS", bus->address()},
                {"QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1"}};
    }
    void start() {
        bridge.emplace(home, variables(), std::vector<std::string>{});
        ASSERT_TRUE(bridge->isListening());
        ASSERT_TRUE(becomesTrue([this] { return screen->popover().has_value(); }));
    }
    // The last line but "done"; fails the test when it does not come to that.
    std::string asScreenReader(const std::vector<std::string>& words) {
        std::vector<std::string> command{"sh", "-c", "/usr/bin/python3 \"$@\" 2>&1; echo end", "sh",
                                         BRIDGE_SCREEN_READER};
        command.insert(command.end(), words.begin(), words.end());
        auto all = environmentOf(home);
        all.merge(variables());
        ChildProcess reader(command, all, "");
        std::string answer;
        std::string everything;
        for (auto line = reader.readLine(); line != "end"; line = reader.readLine()) {
            everything += line + '\n';
            if (line == "done") return answer;
            answer = line;
        }
        ADD_FAILURE() << words[0] << ' ' << words.back() << ": " << everything;
        return {};
    }
    void press(const std::string& role, const std::string& name) { asScreenReader({"press", role, name}); }
    std::string state(const std::string& name) { return asScreenReader({"state", "check box", name}); }
    bool becomes(const std::string& name, const std::string& wanted) {
        return becomesTrue([&] { return state(name) == wanted; });
    }
    // What an agent with the newest credential is answered.
    std::string call(const std::string& operation, const std::string& payload = "{}") {
        const auto credentials = agentServer->credentials();
        const auto credential = credentials.empty() ? "none" : credentials.back();
        ChildProcess curl(
            {"curl", "-s", "-H", "Authorization: Bearer " + credential, "-H", "Content-Type: application/json", "-d",
             R"({"operation":")" + operation + R"(","payload":)" + payload + "}", "http://127.0.0.1:32123/v1/execute"},
            {}, "");
        return curl.readLine();
    }
    static bool isAllowed(const std::string& answer) { return answer.find(R"("result":)") != std::string::npos; }
    static bool isRefused(const std::string& answer, const std::string& code) {
        return answer.find('"' + code + '"') != std::string::npos;
    }
    void importCalendars() {
        putFile(home / "Club.ics", "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:test\r\nBEGIN:VEVENT\r\nUID:1\r\n"
                                   "DTSTART:20300101T100000Z\r\nDTEND:20300101T110000Z\r\nSUMMARY:Regatta\r\n"
                                   "END:VEVENT\r\nEND:VCALENDAR\r\n");
        ChildProcess import({"sh", "-c", "\"$0\" \"$@\" 2>&1; echo end", BRIDGE_IMPORT, home.file("Club.ics")},
                            environmentOf(home), "");
        while (import.readLine() != "end") {
        }
    }
};

TEST_F(Story, TogglesHaveNamesAndStatesAndCanBeSwitchedByAScreenReader) {
    start();
    press("push button", "Contacts");
    EXPECT_EQ(state("Read contacts"), "unchecked");
    press("check box", "Read contacts");
    EXPECT_TRUE(becomes("Read contacts", "checked"));
    EXPECT_NE(getFile(home / "data/brindlefox-apple-bridge/defaults.json").find("contacts.read"), std::string::npos);
    press("check box", "Read contacts");
    EXPECT_TRUE(becomes("Read contacts", "unchecked"));
}

TEST_F(Story, FromTheFirstStartToAnAgentThatIsAllowedAndRefused) {
    importCalendars();
    start();
    const std::string search =
        R"({"startDate":"2030-01-01T00:00:00Z","endDate":"2030-01-02T00:00:00Z","calendarIDs":[]})";
    EXPECT_TRUE(isRefused(call("calendar.events.search", search), "pairing_required"));

    // Pairs.
    asScreenReader({"focus", "text", "One-time pairing code"});
    screen->type(agentServer->issueCode());
    press("push button", "Pair");
    EXPECT_TRUE(becomesTrue([&] { return isRefused(call("calendar.events.search", search), "capability_denied"); }));

    // Grants access, enables one capability and authorizes one calendar.
    press("push button", "Grant access: Calendar");
    press("push button", "Allow");
    press("push button", "Calendar");
    press("check box", "Read events");
    press("check box", "Club");
    EXPECT_TRUE(becomes("Club", "checked"));
    const auto found = call("calendar.events.search", search);
    EXPECT_TRUE(isAllowed(found)) << found;
    EXPECT_NE(found.find("Regatta"), std::string::npos) << found;

    // Adds a folder.
    const auto folder = home.file("Papers");
    std::filesystem::create_directory(folder);
    putFile(home / "Papers/note.txt", "x");
    press("push button", "Files");
    press("check box", "List files and folders");
    press("push button", "Add Folder\xe2\x80\xa6");
    asScreenReader({"describe", "push button", "Allow Folder"});
    screen->type(folder);
    screen->press("Return");
    EXPECT_TRUE(becomesTrue([&] { return call("files.roots.list").find(folder) != std::string::npos; }));

    // Switches off.
    press("push button", "Calendar");
    press("check box", "Read events");
    EXPECT_TRUE(becomes("Read events", "unchecked"));
    EXPECT_TRUE(isRefused(call("calendar.events.search", search), "capability_denied"));

    press("push button", "Quit");
    EXPECT_EQ(bridge->exitCode(), 0) << bridge->log();
}

} // namespace
} // namespace bridge
