#include "tests/app/installation.h"

#include <gmock/gmock.h>

namespace bridge {
namespace {

using Identifiers = std::set<std::string>;
using Strings = std::vector<std::string>;

class Calendars : public InstallationTest {
protected:
    void consent(PrivacyService service, int status) { run->consent.setStatus(service, status); }
    void consentToAll() {
        consent(PrivacyService::calendar, 3);
        consent(PrivacyService::reminders, 3);
    }
    void wait(Task<> task) { run->loop.runUntilDone(std::move(task)); }
    static Strings idsOf(const std::vector<AppleListDescriptor>& lists) {
        Strings ids;
        for (const auto& each : lists)
            ids.push_back(each.id);
        return ids;
    }
    std::optional<std::string> lastError() { return model().lastError.get(); }
};

TEST_F(Calendars, AreOfferedOnceTheUserAllowsIt) {
    run->start();
    EXPECT_TRUE(model().calendars.get().empty());
    EXPECT_TRUE(model().reminderLists.get().empty());
    EXPECT_TRUE(run->eventStore.calls.empty());
    consent(PrivacyService::calendar, 3);
    wait(model().refresh());
    EXPECT_EQ(idsOf(model().calendars.get()), (Strings{"team", "holidays", "personal"}));
    EXPECT_TRUE(model().reminderLists.get().empty());
    consent(PrivacyService::reminders, 3);
    consent(PrivacyService::calendar, 2);
    wait(model().refresh());
    EXPECT_TRUE(model().calendars.get().empty());
    EXPECT_EQ(idsOf(model().reminderLists.get()), (Strings{"projects", "ideas", "errands"}));
    EXPECT_EQ(lastError(), std::nullopt);
}

TEST_F(Calendars, AreKnownWhenTheServerStarts) {
    consentToAll();
    std::vector<size_t> known;
    const auto watch = model().httpServer.state.observe(
        [&](const BridgeServerState&) { known.push_back(model().calendars.get().size()); });
    run->start();
    EXPECT_EQ(known, (std::vector<size_t>{3, 3}));
}

TEST_F(Calendars, AreSwitchedOneByOneAndKept) {
    consentToAll();
    run->start();
    wait(model().setCalendar("team", true));
    wait(model().setCalendar("personal", true));
    wait(model().setCalendar("team", false));
    wait(model().setReminderList("ideas", true));
    EXPECT_EQ(model().allowedCalendarIDs.get(), Identifiers{"personal"});
    EXPECT_EQ(model().allowedReminderListIDs.get(), Identifiers{"ideas"});
    EXPECT_EQ(lastError(), std::nullopt);
    restart();
    run->start();
    EXPECT_EQ(model().allowedCalendarIDs.get(), Identifiers{"personal"});
    EXPECT_EQ(model().allowedReminderListIDs.get(), Identifiers{"ideas"});
    EXPECT_EQ(storedDefaults().at("appleBridge.allowedCalendarIDs"), parseJSON(R"(["personal"])"));
}

TEST_F(Calendars, AreSwitchedAllAtOnce) {
    consentToAll();
    run->start();
    wait(model().setAllCalendars(true));
    wait(model().setAllReminderLists(true));
    EXPECT_EQ(model().allowedCalendarIDs.get(), (Identifiers{"holidays", "personal", "team"}));
    EXPECT_EQ(model().allowedReminderListIDs.get(), (Identifiers{"errands", "ideas", "projects"}));
    wait(model().setAllCalendars(false));
    wait(model().setAllReminderLists(false));
    EXPECT_TRUE(model().allowedCalendarIDs.get().empty());
    EXPECT_TRUE(model().allowedReminderListIDs.get().empty());
}

TEST_F(Calendars, ShowsWhatTheAgentMadeAtTheNextRefresh) {
    consentToAll();
    run->start();
    const CreateAppleListRequest garden{"Garden", std::nullopt};
    const auto made = run->loop.runUntilDone(model().dataBridge.createCalendar(garden));
    wait(model().refresh());
    EXPECT_EQ(model().allowedCalendarIDs.get(), Identifiers{made.id});
    EXPECT_EQ(model().calendars.get().size(), 4u);
}

TEST_F(Calendars, AFailedSwitchIsShownUntilSomethingSucceeds) {
    consent(PrivacyService::calendar, 3);
    run->start();
    wait(model().setCalendar("nowhere", true));
    EXPECT_EQ(lastError(), "Calendar not found: nowhere");
    wait(model().setReminderList("errands", true));
    EXPECT_EQ(lastError(), "Full access to Reminders has not been granted.");
    wait(model().setAllReminderLists(false));
    EXPECT_EQ(lastError(), "Full access to Reminders has not been granted.");
    EXPECT_TRUE(model().allowedCalendarIDs.get().empty());
    wait(model().setCalendar("team", true));
    EXPECT_EQ(lastError(), std::nullopt);
}

TEST_F(Calendars, AStoreThatFailsIsToldAndWhatWasKnownStays) {
    consentToAll();
    run->start();
    run->eventStore.isLost = true;
    wait(model().refresh());
    EXPECT_EQ(lastError(), "The reminder lists could not be read: The calendars can't be reached.");
    EXPECT_EQ(model().calendars.get().size(), 3u);
    EXPECT_EQ(model().reminderLists.get().size(), 3u);
    wait(model().setCalendar("team", true));
    EXPECT_EQ(lastError(), "The calendars can't be reached.");
    EXPECT_TRUE(model().allowedCalendarIDs.get().empty());
    run->eventStore.reset();
    wait(model().refresh());
    EXPECT_EQ(lastError(), std::nullopt);
}

TEST_F(Calendars, AStoreThatFailsAtTheStartIsNotFatal) {
    consentToAll();
    run->eventStore.isLost = true;
    run->start();
    EXPECT_THAT(lastError().value_or(""), testing::HasSubstr("The calendars can't be reached."));
    EXPECT_EQ(model().httpServer.state.get(), BridgeServerState(ServerListening{32123}));
    run->pair(agentServer);
    EXPECT_EQ(run->health(agentServer.credentials().at(0)), served);
}

} // namespace
} // namespace bridge
