#include "tests/dashboard/dashboard_test.h"
#include "tests/fakes/memory_user_defaults.h"

namespace bridge {
namespace {

class Groups : public DashboardTest {
protected:
    std::set<BridgeCapability> enabled() { return model().enabledCapabilities.get(); }
    QString count(const QString& group) { return driver->value<QString>("count." + group, "text"); }
    QString expanded() { return window->property("expandedGroup").toString(); }
};

TEST_F(Groups, AreClosedAtFirst) {
    openWithEverythingGranted();
    EXPECT_EQ(expanded(), "");
    EXPECT_EQ(driver->find("capability.calendar.events.read"), nullptr);
}

TEST_F(Groups, OpenOneAtATime) {
    openAt("calendar");
    EXPECT_EQ(expanded(), "calendar");
    EXPECT_TRUE(driver->find("capability.calendar.events.read"));
    driver->click("group.music");
    EXPECT_EQ(expanded(), "music");
    EXPECT_TRUE(driver->find("capability.music.playback"));
    EXPECT_FALSE(driver->find("capability.calendar.events.read"));
    driver->click("group.music");
    EXPECT_EQ(expanded(), "");
    EXPECT_FALSE(driver->find("capability.music.playback"));
}

TEST_F(Groups, StayUnderThePointerWhenOneAboveCloses) {
    openAt("calendar");
    driver->item("viewport")->setProperty("contentY", 0);
    const auto at = driver->item("group.keynote")->mapToScene({}).y();
    driver->item("viewport")->setProperty("contentY", at - 300);
    driver->settle();
    const auto before = driver->item("group.keynote")->mapToScene({}).y();
    driver->click("group.keynote");
    EXPECT_EQ(before, 300);
    EXPECT_EQ(driver->item("group.keynote")->mapToScene({}).y(), before);
}

// Each of the 47, by a click on and a click off.
TEST_F(Groups, SwitchEveryCapability) {
    openWithEverythingGranted();
    for (const auto group : allCapabilityGroups) {
        driver->click("group." + shown(rawValue(group)));
        for (const auto capability : capabilitiesInGroup(group)) {
            const auto name = "capability." + shown(rawValue(capability));
            ASSERT_TRUE(driver->find(name)) << name.toStdString();
            EXPECT_FALSE(driver->isOn(name));
            EXPECT_EQ(driver->value<QString>(name, "text"), shown(title(capability)));
            driver->click(name);
            EXPECT_EQ(enabled(), std::set{capability}) << name.toStdString();
            EXPECT_TRUE(bridge.policy->isEnabled(capability));
            EXPECT_TRUE(driver->isOn(name));
            EXPECT_TRUE(driver->value<bool>(name, "checked"));
            driver->click(name);
            EXPECT_TRUE(enabled().empty()) << name.toStdString();
            EXPECT_FALSE(driver->isOn(name));
        }
    }
}

TEST_F(Groups, EnableAndDisableAllAndSaveOnce) {
    auto defaults = std::make_unique<MemoryUserDefaults>();
    const auto& stored = *defaults;
    bridge.platform.defaults = std::move(defaults);
    openAt("calendar");
    EXPECT_EQ(count("calendar"), "0 of 8 capabilities enabled");
    EXPECT_FALSE(driver->isEnabled("disableAll.calendar"));
    auto before = stored.timesSet();
    driver->click("enableAll.calendar");
    EXPECT_EQ(stored.timesSet(), before + 1);
    EXPECT_EQ(count("calendar"), "8 of 8 capabilities enabled");
    EXPECT_TRUE(driver->isOn("capability.calendar.calendars.delete"));
    EXPECT_FALSE(driver->isEnabled("enableAll.calendar"));
    EXPECT_EQ(enabled().size(), 8u);

    before = stored.timesSet();
    driver->click("disableAll.calendar");
    EXPECT_EQ(stored.timesSet(), before + 1);
    EXPECT_EQ(count("calendar"), "0 of 8 capabilities enabled");
    EXPECT_TRUE(enabled().empty());
}

TEST_F(Groups, LeaveEachOtherAlone) {
    openAt("pages");
    driver->click("enableAll.pages");
    driver->click("group.numbers");
    driver->click("enableAll.numbers");
    driver->click("disableAll.numbers");
    EXPECT_EQ(count("pages"), "3 of 3 capabilities enabled");
    EXPECT_EQ(count("numbers"), "0 of 4 capabilities enabled");
}

TEST_F(Groups, ShowAChangeFromElsewhere) {
    openAt("keynote");
    auto* toggle = driver->item("capability.iwork.keynote.create");
    model().setEnabled(BridgeCapability::keynoteCreate, true);
    driver->settle();
    EXPECT_TRUE(driver->isOn("capability.iwork.keynote.create"));
    EXPECT_EQ(driver->item("capability.iwork.keynote.create"), toggle);
    EXPECT_EQ(count("keynote"), "1 of 2 capabilities enabled");
    // Also after a click, which overwrites what a switch shows.
    driver->click("capability.iwork.keynote.create");
    model().setEnabled(BridgeCapability::keynoteCreate, true);
    driver->settle();
    EXPECT_TRUE(driver->value<bool>("capability.iwork.keynote.create", "checked"));
}

TEST_F(Groups, OfferWhatHelpsWithThePermission) {
    bridge.authorization->setStatus(PrivacyService::calendar, 3);
    open();
    EXPECT_EQ(driver->find("access.calendar"), nullptr);
    EXPECT_EQ(driver->value<QString>("access.reminders", "text"), "Grant access");
    EXPECT_EQ(driver->value<QString>("access.locationMaps", "text"), "Grant access");
    for (const auto* group : {"files", "pages", "numbers", "keynote"})
        EXPECT_EQ(driver->find(QString("access.") + group), nullptr);
    bridge.authorization->setStatus(PrivacyService::contacts, 2); // denied, which can be asked again
    bridge.authorization->setStatus(PrivacyService::music, 2);    // restricted: neither the user nor we can grant it
    driver->click("refresh");
    EXPECT_EQ(driver->value<QString>("access.contacts", "text"), "Grant access");
    EXPECT_EQ(driver->texts("permission.music"), QStringList("Restricted"));
    EXPECT_EQ(driver->find("access.music"), nullptr);
}

TEST_F(Groups, OpenTheSettingsWhereThePlatformHasTheSwitch) {
    bridge.takePermissionsFromTheDesktop()->statuses = {{PrivacyService::calendar, 2}, {PrivacyService::reminders, 0}};
    open();
    EXPECT_EQ(driver->value<QString>("access.calendar", "text"), "Open Settings");
    EXPECT_EQ(driver->value<QString>("access.reminders", "text"), "Grant access");
    driver->click("access.calendar");
    EXPECT_EQ(bridge.privacySettings->opened, 1);
    bridge.privacySettings->failure = "There is no such page here.";
    driver->click("access.calendar");
    EXPECT_EQ(driver->texts("lastError"), (QStringList{"There is no such page here.", "Try again"}));
    driver->click("tryAgain");
    EXPECT_EQ(bridge.privacySettings->opened, 3);
}

TEST_F(Groups, SayWhatServesThem) {
    bridge.platform.services[BridgeCapabilityGroup::keynote] = [] { return ""; };
    openAt("calendar");
    EXPECT_EQ(driver->texts("servedBy.calendar"), QStringList("memory"));
    driver->click("group.music");
    EXPECT_EQ(driver->texts("servedBy.music"), QStringList("MPD"));
    driver->click("group.keynote");
    EXPECT_TRUE(driver->find("capability.iwork.keynote.create"));
    EXPECT_EQ(driver->find("servedBy.keynote"), nullptr);
}

} // namespace
} // namespace bridge
