#include "calendar_bridge_test.h"

namespace bridge {
namespace {

class SearchedCalendars : public CalendarBridgeTest {
protected:
    SearchedCalendars() {
        for (const auto* id : {"personal", "team", "holidays"})
            addEvent(std::string("in ") + id, id, 100, 200);
        for (const auto* id : {"errands", "projects", "ideas"})
            addReminder(std::string("in ") + id, id, id);
    }
    Strings found(Strings calendars) { return idsOf(run(events(calendars))); }
    std::string refusal(Strings calendars) { return failureOf(events(calendars)); }
    Strings foundIn(Strings lists) { return idsOf(run(reminders(lists))); }
    std::string listRefusal(Strings lists) { return failureOf(reminders(lists)); }

private:
    Task<std::vector<CalendarEventDescriptor>> events(Strings calendars) {
        return bridge.searchEvents({{0}, {1000}, std::move(calendars), std::nullopt});
    }
    Task<std::vector<ReminderDescriptor>> reminders(Strings lists) {
        SearchRemindersRequest request;
        request.listIDs = std::move(lists);
        return bridge.searchReminders(std::move(request));
    }
};

TEST_F(SearchedCalendars, AreAllThatAreAllowedUnlessNamed) {
    allowOnly({"personal", "holidays"});
    EXPECT_EQ(found({}), (Strings{"in personal", "in holidays"}));
    EXPECT_EQ(found({"holidays"}), Strings{"in holidays"});
    EXPECT_EQ(found({"holidays", "holidays", "personal", "holidays"}), (Strings{"in personal", "in holidays"}));
    allowOnlyLists({"errands", "ideas"});
    EXPECT_EQ(foundIn({}), (Strings{"in errands", "in ideas"}));
    EXPECT_EQ(foundIn({"ideas", "ideas"}), Strings{"in ideas"});
}

TEST_F(SearchedCalendars, AreNoneWhenNothingIsAllowed) {
    EXPECT_EQ(refusal({}), denied + "No calendars have been authorized in Brindlefox Apple Bridge.");
    EXPECT_EQ(refusal({"personal"}), denied + "No calendars have been authorized in Brindlefox Apple Bridge.");
    EXPECT_EQ(listRefusal({}), denied + "No reminder lists have been authorized in Brindlefox Apple Bridge.");
    EXPECT_EQ(listRefusal({"ideas"}), denied + "No reminder lists have been authorized in Brindlefox Apple Bridge.");
}

TEST_F(SearchedCalendars, MustEachBeAllowed) {
    allowOnly({"personal"});
    allowOnlyLists({"errands"});
    const auto notAllowed = denied + "Access is not authorized for resource identifier ";
    EXPECT_EQ(refusal({"personal", "team", "holidays"}), notAllowed + "team.");
    EXPECT_EQ(refusal({"nowhere"}), notAllowed + "nowhere.");
    EXPECT_EQ(refusal({"errands"}), notAllowed + "errands.");
    EXPECT_EQ(listRefusal({"projects"}), notAllowed + "projects.");
    EXPECT_EQ(listRefusal({"personal"}), notAllowed + "personal.");
}

TEST_F(SearchedCalendars, ThatAreGoneAreNotFoundWhenNamedAndLeftOutOtherwise) {
    allowVanished("gone");
    EXPECT_EQ(refusal({}), denied + "No currently available calendars are authorized in Brindlefox Apple Bridge.");
    EXPECT_EQ(listRefusal({}),
              denied + "No currently available reminder lists are authorized in Brindlefox Apple Bridge.");
    EXPECT_EQ(refusal({"gone"}), "Calendar not found: gone");
    EXPECT_EQ(listRefusal({"gone"}), "Reminder list not found: gone");
    run(bridge.setCalendar("team", true));
    run(bridge.setReminderList("ideas", true));
    EXPECT_EQ(found({}), Strings{"in team"});
    EXPECT_EQ(refusal({"team", "gone"}), "Calendar not found: gone");
    EXPECT_EQ(foundIn({}), Strings{"in ideas"});
    EXPECT_EQ(listRefusal({"ideas", "gone"}), "Reminder list not found: gone");
}

// For both kinds: where a new item goes.
class Destination : public CalendarBridgeTest {
protected:
    struct Kind {
        EntityType entityType;
        std::string first, second, readOnly;
    };
    const Kind kinds[2] = {{EntityType::event, "personal", "team", "holidays"},
                           {EntityType::reminder, "errands", "projects", "ideas"}};

    void allow(const Kind& kind, Strings ids) {
        if (kind.entityType == EntityType::event)
            allowOnly(std::move(ids));
        else
            allowOnlyLists(std::move(ids));
    }
    // Where it went, or why it did not.
    std::string destination(const Kind& kind, std::optional<std::string> named = std::nullopt) {
        if (kind.entityType == EntityType::event) {
            CreateCalendarEventRequest request;
            request.calendarID = named;
            request.title = "New";
            request.endDate = {60};
            const auto before = store.allEvents.size();
            const auto refusal = failureOf(bridge.createEvent(request));
            EXPECT_EQ(store.allEvents.size(), before + (refusal.empty() ? 1 : 0));
            return refusal.empty() ? store.allEvents.back().calendarID : refusal;
        }
        CreateReminderRequest request;
        request.listID = named;
        request.title = "New";
        const auto before = store.allReminders.size();
        const auto refusal = failureOf(bridge.createReminder(request));
        EXPECT_EQ(store.allReminders.size(), before + (refusal.empty() ? 1 : 0));
        return refusal.empty() ? store.allReminders.back().listID : refusal;
    }
    static std::string choose(const Kind& kind, const char* ofCalendars, const char* ofLists) {
        return kind.entityType == EntityType::event ? ofCalendars : ofLists;
    }
    static std::string ambiguous(const Kind& kind) {
        return malformed + choose(kind,
                                  "calendarID is required unless exactly one writable calendar is authorized or the "
                                  "default calendar is authorized.",
                                  "listID is required unless exactly one writable reminder list is authorized or the "
                                  "default list is authorized.");
    }
};

TEST_F(Destination, IsTheNamedOne) {
    for (const auto& kind : kinds) {
        allow(kind, {kind.first, kind.second});
        store.defaults[kind.entityType] = kind.first;
        EXPECT_EQ(destination(kind, kind.second), kind.second);
    }
}

TEST_F(Destination, ThatIsNamedMustBeAllowedAndThenExist) {
    allowVanished("gone");
    for (const auto& kind : kinds) {
        const auto notAllowed = denied + choose(kind, "Calendar access is not authorized for this identifier.",
                                                "Reminder-list access is not authorized for this identifier.");
        EXPECT_EQ(destination(kind, kind.first), notAllowed);
        EXPECT_EQ(destination(kind, "nowhere"), notAllowed);
        EXPECT_EQ(destination(kind, ""), notAllowed);
        EXPECT_EQ(destination(kind, "gone"), choose(kind, "Calendar not found: gone", "Reminder list not found: gone"));
    }
}

TEST_F(Destination, OfAnotherKindIsNotFound) {
    defaults.setStrings(AppleResourceAccessPolicy::calendarsKey, {"errands"});
    AppleDataBridge confused(store, authorization, defaults);
    CreateCalendarEventRequest request;
    request.calendarID = "errands";
    request.title = "New";
    request.endDate = {60};
    EXPECT_EQ(failureOf(confused.createEvent(request)), "Calendar not found: errands");
}

TEST_F(Destination, ThatIsNamedAndReadOnlyIsTried) {
    for (const auto& kind : kinds) {
        allow(kind, {kind.readOnly, kind.first});
        EXPECT_EQ(destination(kind, kind.readOnly), "platform: The calendar takes no changes.");
    }
}

TEST_F(Destination, IsTheDefaultWhereThatIsAllowed) {
    for (const auto& kind : kinds) {
        allow(kind, {kind.first, kind.second});
        store.defaults[kind.entityType] = kind.second;
        EXPECT_EQ(destination(kind), kind.second);
    }
}

TEST_F(Destination, IsTheDefaultRatherThanTheOnlyWritableOne) {
    for (const auto& kind : kinds) {
        allow(kind, {kind.first, kind.readOnly});
        store.defaults[kind.entityType] = kind.readOnly;
        EXPECT_EQ(destination(kind), "platform: The calendar takes no changes.");
    }
}

TEST_F(Destination, IsTheOnlyWritableOneOtherwise) {
    for (const auto& kind : kinds) {
        allow(kind, {kind.second, kind.readOnly});
        EXPECT_EQ(destination(kind), kind.second);
        store.defaults[kind.entityType] = kind.first; // not allowed
        EXPECT_EQ(destination(kind), kind.second);
    }
}

TEST_F(Destination, IsAskedForWhenNothingSettlesIt) {
    for (const auto& kind : kinds) {
        allow(kind, {kind.first, kind.second});
        EXPECT_EQ(destination(kind), ambiguous(kind));
        store.defaults[kind.entityType] = "nowhere";
        EXPECT_EQ(destination(kind), ambiguous(kind));
        allow(kind, {kind.readOnly});
        EXPECT_EQ(destination(kind), ambiguous(kind));
        store.defaults[kind.entityType] = kind.first; // not allowed
        EXPECT_EQ(destination(kind), ambiguous(kind));
    }
}

TEST_F(Destination, IsRefusedAsASearchIsWhenNothingIsThere) {
    for (const auto& kind : kinds) {
        store.defaults[kind.entityType] = kind.first; // not allowed
        EXPECT_EQ(destination(kind),
                  denied + choose(kind, "No calendars have been authorized in Brindlefox Apple Bridge.",
                                  "No reminder lists have been authorized in Brindlefox Apple Bridge."));
    }
    allowVanished("gone");
    for (const auto& kind : kinds)
        EXPECT_EQ(destination(kind),
                  denied + choose(kind, "No currently available calendars are authorized in Brindlefox Apple Bridge.",
                                  "No currently available reminder lists are authorized in Brindlefox Apple Bridge."));
}

} // namespace
} // namespace bridge
