#include "calendar_bridge_test.h"

namespace bridge {
namespace {

class Calendars : public CalendarBridgeTest {};

TEST_F(Calendars, AreListedByAccountThenTitleWithoutRegardToCase) {
    const auto home = store.allSources[0];
    store.add(EntityType::event, "alpha", "alpha", home);
    store.add(EntityType::event, "zebra", "Zebra", home);
    store.add(EntityType::event, "umlaut", "Ärzte", home);
    store.add(EntityType::event, "personal too", "PERSONAL", home);
    EXPECT_EQ(idsOf(run(bridge.listCalendars())),
              (Strings{"team", "holidays", "alpha", "umlaut", "personal", "personal too", "zebra"}));
    EXPECT_EQ(idsOf(run(bridge.listReminderLists())), (Strings{"projects", "ideas", "errands"}));
}

TEST_F(Calendars, AreDescribedWithTheirAccount) {
    const auto calendars = run(bridge.listCalendars());
    ASSERT_EQ(calendars.size(), 3u);
    EXPECT_EQ(calendars[0], (AppleListDescriptor{"team", "Team", "apple trees ltd", "calDAV", true}));
    EXPECT_EQ(calendars[1], (AppleListDescriptor{"holidays", "Holidays", "Feeds", "subscribed", false}));
    EXPECT_EQ(calendars[2], (AppleListDescriptor{"personal", "Personal", "Home", "local", true}));
}

TEST_F(Calendars, OfEveryKindOfAccountHaveItsName) {
    store.allCalendars.clear();
    for (const auto type : {SourceType::local, SourceType::exchange, SourceType::calDAV, SourceType::cloud,
                            SourceType::subscribed, SourceType::birthdays, static_cast<SourceType>(6)})
        store.add(EntityType::event, "c", "C", {"s", std::to_string(static_cast<int>(type)), type});
    std::vector<std::string> types;
    for (const auto& each : run(bridge.listCalendars()))
        types.push_back(each.sourceType);
    EXPECT_EQ(types, (Strings{"local", "exchange", "calDAV", "cloud", "subscribed", "birthdays", "unknown"}));
}

TEST_F(Calendars, AuthorizedOnesAreThoseOnTheListThatExist) {
    EXPECT_TRUE(run(bridge.authorizedCalendars()).empty());
    run(bridge.setCalendar("personal", true));
    run(bridge.setCalendar("team", true));
    allowVanished("gone");
    EXPECT_EQ(idsOf(run(bridge.authorizedCalendars())), (Strings{"team", "personal"}));
    EXPECT_EQ(idsOf(run(bridge.authorizedReminderLists())), Strings());
    run(bridge.setCalendar("team", false));
    EXPECT_EQ(idsOf(run(bridge.authorizedCalendars())), Strings{"personal"});
}

TEST_F(Calendars, SwitchingAnUnknownOneChangesNothing) {
    const auto before = defaults.timesSet();
    EXPECT_EQ(failureOf(bridge.setCalendar("nowhere", true)), "Calendar not found: nowhere");
    EXPECT_EQ(failureOf(bridge.setCalendar("errands", true)), "Calendar not found: errands");
    EXPECT_EQ(failureOf(bridge.setCalendar("nowhere", false)), "Calendar not found: nowhere");
    EXPECT_EQ(failureOf(bridge.setReminderList("personal", true)), "Reminder list not found: personal");
    EXPECT_EQ(defaults.timesSet(), before);
}

TEST_F(Calendars, SwitchingOneIsStoredAtOnce) {
    run(bridge.setCalendar("team", true));
    run(bridge.setCalendar("personal", true));
    run(bridge.setReminderList("ideas", true));
    EXPECT_EQ(defaults.strings("appleBridge.allowedCalendarIDs"), (Strings{"personal", "team"}));
    EXPECT_EQ(defaults.strings("appleBridge.allowedReminderListIDs"), (Strings{"ideas"}));
    const AppleDataBridge restarted(store, authorization, defaults);
    EXPECT_EQ(restarted.accessPolicy().calendarIDs(), bridge.accessPolicy().calendarIDs());
}

TEST_F(Calendars, SwitchingAllForgetsThoseThatAreGone) {
    for (const bool authorized : {true, false}) {
        allowVanished("gone");
        run(bridge.setCalendar("team", true));
        EXPECT_TRUE(bridge.accessPolicy().calendarIDs().contains("gone"));
        run(bridge.setAllCalendars(authorized));
        run(bridge.setAllReminderLists(authorized));
        using Identifiers = AppleResourceAccessPolicy::Identifiers;
        EXPECT_EQ(bridge.accessPolicy().calendarIDs(),
                  authorized ? (Identifiers{"personal", "team", "holidays"}) : Identifiers());
        EXPECT_EQ(bridge.accessPolicy().reminderListIDs(),
                  authorized ? (Identifiers{"errands", "projects", "ideas"}) : Identifiers());
        EXPECT_EQ(defaults.strings("appleBridge.allowedCalendarIDs")->size(), authorized ? 3u : 0u);
    }
}

TEST_F(Calendars, AreCountedAsAllowedOnlyWhileTheyExist) {
    EXPECT_EQ(run(bridge.calendarResources()), (BridgeResourceAccessSnapshot{0, 3}));
    run(bridge.setCalendar("team", true));
    allowVanished("gone");
    EXPECT_EQ(run(bridge.calendarResources()), (BridgeResourceAccessSnapshot{1, 3}));
    EXPECT_EQ(run(bridge.reminderListResources()), (BridgeResourceAccessSnapshot{0, 3}));
    authorization.statuses = {{PrivacyService::calendar, 2}};
    EXPECT_EQ(run(bridge.calendarResources()), (BridgeResourceAccessSnapshot{0, 0}));
}

class Access : public CalendarBridgeTest {};

TEST_F(Access, IsAskedForByService) {
    run(bridge.requestCalendarAccess());
    run(bridge.requestRemindersAccess());
    EXPECT_EQ(authorization.requested, (std::vector{PrivacyService::calendar, PrivacyService::reminders}));
}

TEST_F(Access, ThatIsRefusedIsAnError) {
    authorization.granted = false;
    EXPECT_EQ(failureOf(bridge.requestCalendarAccess()), "Full access to Calendar has not been granted.");
    EXPECT_EQ(failureOf(bridge.requestRemindersAccess()), "Full access to Reminders has not been granted.");
}

TEST_F(Access, ThatNobodyCanBeAskedForIsTheirError) {
    authorization.failsToAsk = true;
    EXPECT_EQ(failureOf(bridge.requestCalendarAccess()), "platform: There is nobody to ask.");
}

class NewCalendar : public CalendarBridgeTest {
protected:
    std::string create(const std::string& title, std::optional<std::string> sourceID = std::nullopt) {
        return failureOf(bridge.createCalendar({title, sourceID}));
    }
    // The account that a new calendar went to.
    std::string sourceOfNew() {
        run(bridge.createCalendar({"New", std::nullopt}));
        return store.allCalendars.back().source.id;
    }
};

TEST_F(NewCalendar, IsAllowedAtOnceAndDescribed) {
    const auto created = run(bridge.createCalendar({"  Garden \n", "work"}));
    EXPECT_EQ(created, (AppleListDescriptor{created.id, "Garden", "apple trees ltd", "calDAV", true}));
    EXPECT_EQ(store.allCalendars.back().id, created.id);
    EXPECT_EQ(store.allCalendars.back().entityType, EntityType::event);
    EXPECT_EQ(defaults.strings("appleBridge.allowedCalendarIDs"), Strings{created.id});
    EXPECT_FALSE(bridge.accessPolicy().reminderListIDs().contains(created.id));
    EXPECT_EQ(idsOf(run(bridge.authorizedCalendars())), Strings{created.id});
}

TEST_F(NewCalendar, AndNewListsAreKeptApart) {
    const auto created = run(bridge.createReminderList({"Garden", std::nullopt}));
    EXPECT_EQ(store.allCalendars.back().entityType, EntityType::reminder);
    EXPECT_EQ(defaults.strings("appleBridge.allowedReminderListIDs"), Strings{created.id});
    EXPECT_FALSE(bridge.accessPolicy().calendarIDs().contains(created.id));
}

TEST_F(NewCalendar, GoesToTheAccountOfTheDefaultCalendar) {
    store.defaults[EntityType::event] = "personal";
    EXPECT_EQ(sourceOfNew(), "home");
    store.defaults[EntityType::event] = "team";
    EXPECT_EQ(sourceOfNew(), "work");
}

TEST_F(NewCalendar, GoesToTheFirstWritableAccountByTitleWithoutADefault) {
    EXPECT_EQ(sourceOfNew(), "work"); // "apple trees ltd"
    store.defaults[EntityType::event] = "gone";
    EXPECT_EQ(sourceOfNew(), "work");
    // The default lies where nothing can be added.
    store.defaults[EntityType::event] = "holidays";
    EXPECT_EQ(sourceOfNew(), "work");
}

TEST_F(NewCalendar, NeedsAnAccountThatCanBeWritten) {
    EXPECT_EQ(create("New", "feeds"), "Resource not found: feeds");
    EXPECT_EQ(create("New", "nowhere"), "Resource not found: nowhere");
    EXPECT_EQ(create("New", ""), "Resource not found: ");
    for (auto& calendar : store.allCalendars)
        calendar.allowsContentModifications = false;
    const auto before = everything();
    EXPECT_EQ(create("New"), "Operation failed: No writable Apple account is available for the new list.");
    EXPECT_EQ(create("New", "home"), "Resource not found: home");
    EXPECT_EQ(failureOf(bridge.createReminderList({"New", std::nullopt})),
              "Operation failed: No writable Apple account is available for the new list.");
    EXPECT_EQ(everything(), before);
}

TEST_F(NewCalendar, HasATitle) {
    EXPECT_EQ(create(" \n\t", "nowhere"), malformed + "Calendar title cannot be empty.");
    EXPECT_EQ(failureOf(bridge.createReminderList({"", std::nullopt})),
              malformed + "Reminder list title cannot be empty.");
    EXPECT_EQ(create(std::string(1001, 'x')), malformed + "Calendar title cannot exceed 1,000 characters.");
}

class WritableSources : public CalendarBridgeTest {};

TEST_F(WritableSources, AreThoseWithACalendarThatTakesChanges) {
    EXPECT_EQ(run(bridge.listCalendarSources()),
              (std::vector<AppleSourceDescriptor>{{"work", "apple trees ltd", "calDAV"}, {"home", "Home", "local"}}));
    store.allCalendars[1].allowsContentModifications = false; // team
    EXPECT_EQ(idsOf(run(bridge.listCalendarSources())), Strings{"home"});
    EXPECT_EQ(idsOf(run(bridge.listReminderSources())), (Strings{"work", "home"}));
}

TEST_F(WritableSources, HaveTheDefaultCalendarsAccountAmongThemWhateverItTakes) {
    for (auto& calendar : store.allCalendars)
        calendar.allowsContentModifications = false;
    EXPECT_TRUE(run(bridge.listCalendarSources()).empty());
    store.defaults[EntityType::event] = "personal";
    EXPECT_EQ(idsOf(run(bridge.listCalendarSources())), Strings{"home"});
    EXPECT_TRUE(run(bridge.listReminderSources()).empty());
}

TEST_F(WritableSources, AreNeverSubscribedOnesNorBirthdays) {
    for (const auto type : {SourceType::subscribed, SourceType::birthdays, static_cast<SourceType>(17)}) {
        const auto odd = store.addSource("odd", "Odd", type);
        store.add(EntityType::event, "writable all the same", "Odd", odd);
        store.defaults[EntityType::event] = "writable all the same";
        EXPECT_EQ(idsOf(run(bridge.listCalendarSources())), (Strings{"work", "home"}));
    }
}

TEST_F(WritableSources, OfEqualTitlesKeepTheOrderOfTheStore) {
    for (const auto* id : {"1", "2", "3"}) {
        const auto source = store.addSource(id, id == std::string("2") ? "HOME" : "Home");
        store.add(EntityType::event, std::string("of ") + id, "C", source);
    }
    EXPECT_EQ(idsOf(run(bridge.listCalendarSources())), (Strings{"work", "home", "1", "2", "3"}));
}

class Retitling : public CalendarBridgeTest {};

TEST_F(Retitling, IsSavedTrimmed) {
    allowAll();
    EXPECT_EQ(run(bridge.updateCalendar({"team", " \u00a0Crew\n"})),
              (AppleListDescriptor{"team", "Crew", "apple trees ltd", "calDAV", true}));
    EXPECT_EQ(store.allCalendars[1].title, "Crew");
    EXPECT_EQ(run(bridge.updateReminderList({"errands", "Duties"})).title, "Duties");
}

TEST_F(Retitling, ChecksInOrderAndChangesNothing) {
    run(bridge.setCalendar("team", true));
    const auto before = everything();
    const auto notAllowed = denied + "The calendar containing this item is not authorized in Brindlefox Apple Bridge.";
    EXPECT_EQ(failureOf(bridge.updateCalendar({"nowhere", ""})), "Calendar not found: nowhere");
    EXPECT_EQ(failureOf(bridge.updateCalendar({"personal", ""})), notAllowed);
    EXPECT_EQ(failureOf(bridge.updateCalendar({"team", " "})), malformed + "Calendar title cannot be empty.");
    EXPECT_EQ(failureOf(bridge.updateCalendar({"team", std::string(1001, 'x')})),
              malformed + "Calendar title cannot exceed 1,000 characters.");
    // A reminder list is something in the store, but not allowed here; and if it were, no calendar.
    EXPECT_EQ(failureOf(bridge.updateCalendar({"errands", "New"})), notAllowed);
    EXPECT_EQ(everything(), before);
    defaults.setStrings("appleBridge.allowedCalendarIDs", {"errands"});
    AppleDataBridge confused(store, authorization, defaults);
    EXPECT_EQ(failureOf(confused.updateCalendar({"errands", "New"})), "Calendar not found: errands");
    EXPECT_EQ(failureOf(confused.deleteCalendar("errands")), "Calendar not found: errands");
    EXPECT_EQ(store.allCalendars.size(), 6u);
}

TEST_F(Retitling, OfAListLooksAmongListsOnly) {
    run(bridge.setReminderList("errands", true));
    EXPECT_EQ(failureOf(bridge.updateReminderList({"nowhere", ""})), "Reminder list not found: nowhere");
    EXPECT_EQ(failureOf(bridge.updateReminderList({"team", ""})), "Reminder list not found: team");
    EXPECT_EQ(failureOf(bridge.updateReminderList({"projects", ""})),
              denied + "The reminder list containing this item is not authorized in Brindlefox Apple Bridge.");
    EXPECT_EQ(failureOf(bridge.updateReminderList({"errands", ""})),
              malformed + "Reminder list title cannot be empty.");
}

TEST_F(Retitling, PassesTheStoresRefusalOn) {
    allowAll();
    EXPECT_EQ(failureOf(bridge.updateCalendar({"holidays", "New"})), "platform: The calendar takes no changes.");
}

class Deleting : public CalendarBridgeTest {};

TEST_F(Deleting, ACalendarTakesItOffTheAllowList) {
    allowAll();
    run(bridge.deleteCalendar("team"));
    EXPECT_EQ(idsOf(run(bridge.listCalendars())), (Strings{"holidays", "personal"}));
    EXPECT_EQ(defaults.strings("appleBridge.allowedCalendarIDs"), (Strings{"holidays", "personal"}));
    run(bridge.deleteReminderList("errands"));
    EXPECT_EQ(defaults.strings("appleBridge.allowedReminderListIDs"), (Strings{"ideas", "projects"}));
    EXPECT_EQ(failureOf(bridge.deleteCalendar("team")), "Calendar not found: team");
}

TEST_F(Deleting, ACalendarThatWasJustMadeLeavesNothing) {
    const auto before = everything();
    const auto created = run(bridge.createCalendar({"Short-lived", "home"}));
    run(bridge.deleteCalendar(created.id));
    EXPECT_EQ(std::get<0>(everything()), std::get<0>(before));
    EXPECT_TRUE(bridge.accessPolicy().calendarIDs().empty());
}

TEST_F(Deleting, ChecksInOrderAndChangesNothing) {
    run(bridge.setCalendar("holidays", true));
    run(bridge.setReminderList("ideas", true));
    const auto before = everything();
    EXPECT_EQ(failureOf(bridge.deleteCalendar("nowhere")), "Calendar not found: nowhere");
    EXPECT_EQ(failureOf(bridge.deleteCalendar("team")),
              denied + "The calendar containing this item is not authorized in Brindlefox Apple Bridge.");
    EXPECT_EQ(failureOf(bridge.deleteCalendar("errands")),
              denied + "The calendar containing this item is not authorized in Brindlefox Apple Bridge.");
    EXPECT_EQ(failureOf(bridge.deleteCalendar("holidays")), "platform: The calendar takes no changes.");
    EXPECT_EQ(failureOf(bridge.deleteReminderList("nowhere")), "Reminder list not found: nowhere");
    EXPECT_EQ(failureOf(bridge.deleteReminderList("team")), "Reminder list not found: team");
    EXPECT_EQ(failureOf(bridge.deleteReminderList("errands")),
              denied + "The reminder list containing this item is not authorized in Brindlefox Apple Bridge.");
    EXPECT_EQ(failureOf(bridge.deleteReminderList("ideas")), "platform: The calendar takes no changes.");
    EXPECT_EQ(everything(), before);
}

} // namespace
} // namespace bridge
