#include "tests/app/installation.h"
#include "tests/fakes/gated_event_store.h"

namespace bridge {
namespace {

using Identifiers = std::set<std::string>;
using When = GatedEventStore::When;

// With calendars that answer when the test lets them.
class ManyActions : public InstallationTest {
protected:
    ManyActions() {
        run = std::make_unique<ProgramRun>(folder, slow);
        run->consent.setStatus(PrivacyService::calendar, 3);
        run->start();
        run->eventStore.calls.clear();
    }
    ~ManyActions() override { run.reset(); }

    void hold(When when) { slow.hold("calendars", "", when); }
    void goOn() {
        slow.holdNoMore();
        while (slow.waiting() > 0)
            slow.release();
    }
    // How often the store was asked for calendars.
    size_t listings() const { return run->eventStore.calls.size(); }
    const Identifiers& allowed() { return model().allowedCalendarIDs.get(); }
    void startAll(std::vector<Task<>>& tasks) {
        for (auto& task : tasks)
            task.start();
    }

    GatedEventStore slow{calendars};
};

TEST_F(ManyActions, ClicksTakeEffectInTheirOrder) {
    hold(When::afterEffect);
    std::vector<Task<>> clicks;
    clicks.push_back(model().setAllCalendars(true));
    clicks.push_back(model().setCalendar("team", false));
    clicks.push_back(model().setCalendar("holidays", false));
    clicks.push_back(model().setCalendar("team", true));
    startAll(clicks);
    EXPECT_EQ(slow.waiting(), 1u);
    EXPECT_TRUE(allowed().empty());
    goOn();
    for (auto& click : clicks)
        EXPECT_TRUE(click.done());
    EXPECT_EQ(allowed(), (Identifiers{"personal", "team"}));
    EXPECT_EQ(model().dataBridge.accessPolicy().calendarIDs(), allowed());
}

TEST_F(ManyActions, AClickThatFailsHoldsUpNoOther) {
    hold(When::afterEffect);
    std::vector<Task<>> clicks;
    clicks.push_back(model().setCalendar("nowhere", true));
    clicks.push_back(model().setCalendar("team", true));
    startAll(clicks);
    goOn();
    EXPECT_EQ(allowed(), Identifiers{"team"});
}

TEST_F(ManyActions, AClickThatIsDroppedHoldsUpNoOther) {
    hold(When::afterEffect);
    auto dropped = std::make_optional(model().setCalendar("team", true));
    auto next = model().setCalendar("personal", true);
    dropped->start();
    next.start();
    dropped.reset();
    goOn();
    EXPECT_TRUE(next.done());
    EXPECT_EQ(allowed(), Identifiers{"personal"});
}

TEST_F(ManyActions, RefreshesThatWaitBecomeOne) {
    hold(When::afterEffect);
    std::vector<Task<>> refreshes;
    for (int count = 0; count < 10; ++count)
        refreshes.push_back(model().refresh());
    startAll(refreshes);
    EXPECT_EQ(listings(), 1u);
    goOn();
    for (auto& refresh : refreshes)
        EXPECT_TRUE(refresh.done());
    EXPECT_EQ(listings(), 2u);
}

TEST_F(ManyActions, WhatWasReadLaterIsShownLast) {
    hold(When::afterEffect);
    auto first = model().refresh();
    first.start(); // its answer is on the way, without the calendar that is made now
    run->loop.runUntilDone(calendars.addCalendar(EntityType::event, "home", "New"));
    auto second = model().refresh();
    second.start();
    EXPECT_EQ(slow.waiting(), 1u);
    goOn();
    EXPECT_TRUE(first.done() && second.done());
    EXPECT_EQ(model().calendars.get().size(), 4u);
}

TEST_F(ManyActions, APermissionThatGoesWhileListingLeavesNothingToChoose) {
    hold(When::afterEffect);
    auto first = model().refresh();
    first.start();
    run->consent.setStatus(PrivacyService::calendar, 2);
    auto second = model().refresh();
    second.start();
    goOn();
    EXPECT_TRUE(model().calendars.get().empty());
    EXPECT_EQ(model().calendarPermission.get(), BridgePermissionState::denied);
}

TEST_F(ManyActions, WhatNeedsNoWaitingIsShownAtOnce) {
    hold(When::beforeEffect);
    auto first = model().refresh();
    first.start();
    run->policy.setEnabled(BridgeCapability::filesRead, true);
    run->consent.setStatus(PrivacyService::contacts, 3);
    auto second = model().refresh();
    second.start();
    EXPECT_EQ(model().enabledCapabilities.get(), std::set{BridgeCapability::filesRead});
    EXPECT_EQ(model().contactsPermission.get(), BridgePermissionState::fullAccess);
    // And the switch that is set while it reads stays set.
    model().setEnabled(BridgeCapability::filesRead, false);
    goOn();
    EXPECT_TRUE(second.done());
    EXPECT_TRUE(model().enabledCapabilities.get().empty());
}

TEST_F(ManyActions, ADroppedRefreshLeavesTheReadingToTheNext) {
    hold(When::beforeEffect);
    auto dropped = std::make_optional(model().refresh());
    auto next = model().refresh();
    dropped->start();
    run->loop.runUntilDone(calendars.addCalendar(EntityType::event, "home", "New"));
    next.start();
    dropped.reset();
    goOn();
    EXPECT_TRUE(next.done());
    EXPECT_EQ(model().calendars.get().size(), 4u);
}

TEST_F(ManyActions, AFailureOutlivesARefreshThatBeganBefore) {
    hold(When::afterEffect);
    auto refresh = model().refresh();
    refresh.start();
    run->privacySettings.fails = true;
    model().openPrivacySettings();
    goOn();
    EXPECT_TRUE(refresh.done());
    EXPECT_EQ(model().lastError.get(), "There is no such page here.");
}

TEST_F(ManyActions, AFailureWhileNobodyLookedIsThereWhenTheDashboardOpens) {
    run->privacySettings.fails = true;
    model().openPrivacySettings();
    run->loop.runUntilDone(model().refreshOnOpening());
    EXPECT_EQ(model().lastError.get(), "There is no such page here.");
    run->loop.runUntilDone(model().refresh());
    EXPECT_EQ(model().lastError.get(), std::nullopt);
}

TEST_F(ManyActions, OfTwoFailuresTheUsersOwnIsShownAndThenTheOther) {
    run->eventStore.isLost = true;
    run->privacySettings.fails = true;
    model().openPrivacySettings();
    run->loop.runUntilDone(model().refreshOnOpening());
    EXPECT_EQ(model().lastError.get(), "There is no such page here.");
    run->privacySettings.fails = false;
    model().openPrivacySettings();
    EXPECT_EQ(model().lastError.get(), "The calendars could not be read: The calendars can't be reached.");
    run->eventStore.reset();
    run->loop.runUntilDone(model().refreshOnOpening());
    EXPECT_EQ(model().lastError.get(), std::nullopt);
}

TEST_F(ManyActions, AreKeptUntilTheyAreDone) {
    hold(When::afterEffect);
    model().perform(model().setCalendar("team", true));
    model().perform(model().setCalendar("personal", true));
    goOn();
    EXPECT_EQ(allowed(), (Identifiers{"personal", "team"}));
}

TEST_F(ManyActions, QuittingDropsWhatIsUnderWay) {
    hold(When::afterEffect);
    for (int count = 0; count < 5; ++count) {
        model().perform(model().setCalendar("team", true));
        model().perform(model().refresh());
    }
    run->folderChooser.waits = true;
    run->user.waits = true;
    model().perform(model().addFolder());
    model().perform(model().requestAccess(PrivacyService::music));
    EXPECT_EQ(slow.waiting(), 2u);
    run.reset();
    EXPECT_EQ(slow.waiting(), 0u);
    slow.holdNoMore();
    run = std::make_unique<ProgramRun>(folder, slow);
    run->start();
    EXPECT_TRUE(allowed().empty());
    EXPECT_EQ(model().musicPermission.get(), BridgePermissionState::notDetermined);
}

} // namespace
} // namespace bridge
