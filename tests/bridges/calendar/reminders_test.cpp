#include "calendar_bridge_test.h"
#include "tests/support/time_zone.h"

#include <limits>

namespace bridge {
namespace {

constexpr const char* itemNotAllowed = "Brindlefox resource access denied: The reminder list containing this item is "
                                       "not authorized in Brindlefox Apple Bridge.";

Date at(std::string_view text) {
    return parseDate(text).value();
}

class ReminderSearch : public CalendarBridgeTest {
protected:
    ReminderSearch() { allowAll(); }

    Reminder& add(const std::string& id, std::optional<std::string_view> due = std::nullopt) {
        auto& reminder = addReminder(id, "errands", id);
        if (due) reminder.dueDate = componentsToTheMinute(at(*due));
        return reminder;
    }
    Strings found() { return idsOf(run(bridge.searchReminders(request))); }
    Strings found(const std::string& query) {
        request.query = query;
        return found();
    }

    UserTimeZone berlin{"Europe/Berlin"};
    SearchRemindersRequest request;
};

TEST_F(ReminderSearch, DescribesAllThatAReminderHas) {
    auto& reminder = add("full", "2026-08-14T09:30:00Z");
    reminder.externalIdentifier = "uid";
    reminder.listID = "projects";
    reminder.title = "Water the seeds";
    reminder.notes = "All of them";
    reminder.isCompleted = true;
    reminder.completionDate = at("2026-08-14T10:00:00Z");
    reminder.priority = 5;
    EXPECT_EQ(run(bridge.searchReminders(request)),
              (std::vector<ReminderDescriptor>{{"full", "uid", "projects", "Projects", "Water the seeds", "All of them",
                                                at("2026-08-14T09:30:00Z"), true, at("2026-08-14T10:00:00Z"), 5}}));
}

TEST_F(ReminderSearch, LeavesOutWhatAReminderHasNot) {
    add("bare").title = std::nullopt;
    EXPECT_EQ(
        encodeJSON(run(bridge.searchReminders(request))),
        R"([{"id":"bare","isCompleted":false,"listID":"errands","listTitle":"Errands","priority":0,"title":""}])");
}

TEST_F(ReminderSearch, ReadsADueDateAsTheUsersCalendarHasItNow) {
    add("day").dueDate = DateComponents{.year = 2026, .month = 8, .day = 14};
    add("floating").dueDate = DateComponents{.year = 2026, .month = 8, .day = 14, .hour = 9, .minute = 30};
    add("elsewhere").dueDate =
        DateComponents{.year = 2026, .month = 8, .day = 14, .hour = 9, .minute = 30, .timeZone = "Asia/Tokyo"};
    std::map<std::string, std::optional<Date>> due;
    for (const auto& each : run(bridge.searchReminders(request)))
        due[each.id] = each.dueDate;
    EXPECT_EQ(due["day"], at("2026-08-13T22:00:00Z"));
    EXPECT_EQ(due["floating"], at("2026-08-14T07:30:00Z"));
    EXPECT_EQ(due["elsewhere"], at("2026-08-14T00:30:00Z"));
}

TEST_F(ReminderSearch, HasNoDueDateWhereComponentsFormNone) {
    add("February").dueDate = DateComponents{.year = 2026, .month = 2, .day = 30};
    add("nothing").dueDate = DateComponents{};
    add("zone").dueDate = DateComponents{.year = 2026, .month = 8, .day = 14, .timeZone = "Mars/Olympus"};
    for (const auto& each : run(bridge.searchReminders(request)))
        EXPECT_EQ(each.dueDate, std::nullopt) << each.id;
    request.dueAfter = earliestDate;
    EXPECT_EQ(found(), Strings());
}

TEST_F(ReminderSearch, FindsCompletedOnesAsAsked) {
    add("done").isCompleted = true;
    add("open");
    EXPECT_EQ(found(), (Strings{"done", "open"}));
    request.isCompleted = true;
    EXPECT_EQ(found(), Strings{"done"});
    request.isCompleted = false;
    EXPECT_EQ(found(), Strings{"open"});
}

TEST_F(ReminderSearch, FindsDueDatesFromTheFirstToTheLastMoment) {
    add("early", "2026-08-14T09:00:00Z");
    add("middle", "2026-08-14T10:00:00Z");
    add("late", "2026-08-14T11:00:00Z");
    add("undated");
    request.dueAfter = at("2026-08-14T10:00:00Z");
    EXPECT_EQ(found(), (Strings{"middle", "late"}));
    request.dueBefore = at("2026-08-14T10:00:00Z");
    EXPECT_EQ(found(), Strings{"middle"});
    request.dueAfter = std::nullopt;
    EXPECT_EQ(found(), (Strings{"early", "middle"}));
    request.dueAfter = at("2026-08-14T10:00:01Z");
    EXPECT_EQ(found(), Strings());
}

TEST_F(ReminderSearch, FindsWordsWithoutRegardToCaseAndAccents) {
    add("1").title = "Café";
    add("2").title = "meet at the CAFÉ";
    add("3").title = "Cafe\u0301";
    add("4").notes = "the cafe by the river";
    add("5").title = "Coffee";
    EXPECT_EQ(found("cafe").size(), 4u);
    EXPECT_EQ(found("CAFÉ").size(), 4u);
    EXPECT_EQ(found(" \n café\t").size(), 4u);
    EXPECT_EQ(found("tea"), Strings());
}

TEST_F(ReminderSearch, FindsWordsAcrossTitleAndNotes) {
    auto& reminder = add("1");
    reminder.title = "buy";
    reminder.notes = "milk";
    add("2").title = "buy bread";
    EXPECT_EQ(found("buy milk"), Strings{"1"});
    EXPECT_EQ(found("buymilk"), Strings());
    EXPECT_EQ(found("milk buy"), Strings());
    EXPECT_EQ(found("uy mil"), Strings{"1"});
}

TEST_F(ReminderSearch, AQueryOfNothingButSpaceFiltersNothing) {
    add("1");
    for (const auto* query : {"", "   ", "\n\t\u00a0"})
        EXPECT_EQ(found(query), Strings{"1"});
}

TEST_F(ReminderSearch, TakesEveryFilterTogether) {
    add("match", "2026-08-14T10:00:00Z").title = "Seeds";
    add("done", "2026-08-14T10:00:00Z").isCompleted = true;
    add("later", "2026-08-15T10:00:00Z").title = "Seeds";
    add("other", "2026-08-14T10:00:00Z").title = "Spade";
    request.isCompleted = false;
    request.dueBefore = at("2026-08-14T23:00:00Z");
    EXPECT_EQ(found("seeds"), Strings{"match"});
}

TEST_F(ReminderSearch, OrdersDatedOnesByDateThenTheOthersByTitle) {
    add("beta");
    add("second", "2026-08-14T10:00:00Z");
    add("Alpha");
    add("first", "2026-08-14T09:00:00Z");
    add("second too", "2026-08-14T10:00:00Z");
    add("ähre");
    add("BETA");
    EXPECT_EQ(found(), (Strings{"first", "second", "second too", "ähre", "Alpha", "beta", "BETA"}));
}

TEST_F(ReminderSearch, IsLimitedToAHundredUnlessAskedAndNeverBeyondFiveHundred) {
    for (int index = 0; index < 600; ++index)
        add(std::to_string(index), formatDate({index * 60}));
    const auto count = [&](std::optional<int64_t> limit) {
        request.limit = limit;
        return found().size();
    };
    EXPECT_EQ(count(std::nullopt), 100u);
    EXPECT_EQ(count(1000), 500u);
    EXPECT_EQ(count(500), 500u);
    EXPECT_EQ(count(0), 1u);
    EXPECT_EQ(count(-1), 1u);
    EXPECT_EQ(count(std::numeric_limits<int64_t>::min()), 1u);
    EXPECT_EQ(count(101), 101u);
    EXPECT_EQ(found().back(), "100");
}

class NewReminder : public CalendarBridgeTest {
protected:
    NewReminder() {
        allowAll();
        request.listID = "projects";
        request.title = "Water the seeds";
    }
    ReminderDescriptor create() { return run(bridge.createReminder(request)); }
    const Reminder& saved() const { return store.allReminders.back(); }

    UserTimeZone berlin{"Europe/Berlin"};
    CreateReminderRequest request;
};

TEST_F(NewReminder, IsSavedWithAllThatWasGiven) {
    request.title = "\u00a0Water the seeds ";
    request.notes = "All of them";
    request.dueDate = at("2026-08-14T08:30:45Z");
    request.priority = 1;
    const auto created = create();
    EXPECT_EQ(saved().title, "Water the seeds");
    EXPECT_EQ(saved().listID, "projects");
    EXPECT_EQ(saved().notes, "All of them");
    EXPECT_EQ(saved().priority, 1);
    EXPECT_EQ(
        saved().dueDate,
        (DateComponents{.year = 2026, .month = 8, .day = 14, .hour = 10, .minute = 30, .timeZone = "Europe/Berlin"}));
    EXPECT_EQ(created, (ReminderDescriptor{saved().identifier, saved().externalIdentifier, "projects", "Projects",
                                           "Water the seeds", "All of them", at("2026-08-14T08:30:00Z"), false,
                                           std::nullopt, 1}));
}

TEST_F(NewReminder, HasNothingThatWasNotGiven) {
    create();
    EXPECT_EQ(saved().notes, std::nullopt);
    EXPECT_EQ(saved().dueDate, std::nullopt);
    EXPECT_EQ(saved().priority, 0);
    EXPECT_FALSE(saved().isCompleted);
}

// Says what priority it was given, before the store corrects it.
class PriorityWatch : public SampleEventStore {
public:
    int64_t given = 0;
    Task<Reminder> saveReminder(Reminder reminder) override {
        given = reminder.priority;
        return SampleEventStore::saveReminder(std::move(reminder));
    }
};

TEST_F(NewReminder, HasAPriorityOfAtMostNineAndALowOneIsTheStoresAffair) {
    PriorityWatch watch;
    AppleDataBridge watched(watch, authorization, defaults);
    constexpr auto least = std::numeric_limits<int64_t>::min();
    constexpr auto most = std::numeric_limits<int64_t>::max();
    for (const auto& [asked, given] : std::initializer_list<std::pair<int64_t, int64_t>>{
             {0, 0}, {1, 1}, {9, 9}, {10, 9}, {12, 9}, {most, 9}, {-1, -1}, {-3, -3}, {least, least}}) {
        request.priority = asked;
        run(watched.createReminder(request));
        EXPECT_EQ(watch.given, given);
    }
    request.priority = 12;
    EXPECT_EQ(create().priority, 9);
}

TEST_F(NewReminder, IsCheckedInOrder) {
    run(bridge.setAllReminderLists(false));
    const auto before = everything();
    request.title = " ";
    EXPECT_EQ(failureOf(bridge.createReminder(request)), malformed + "Reminder title cannot be empty.");
    request.title = std::string(1001, 'x');
    EXPECT_EQ(failureOf(bridge.createReminder(request)), malformed + "Reminder title cannot exceed 1,000 characters.");
    request.title = "Water the seeds";
    EXPECT_EQ(failureOf(bridge.createReminder(request)),
              denied + "Reminder-list access is not authorized for this identifier.");
    EXPECT_EQ(everything(), before);
}

class ReminderUpdate : public CalendarBridgeTest {
protected:
    ReminderUpdate() {
        allowAll();
        auto& reminder = addReminder("reminder", "errands", "Water the seeds");
        reminder.notes = "All of them";
        reminder.priority = 5;
        reminder.dueDate = DateComponents{.year = 2026, .month = 8, .day = 14, .second = 7};
        request.identifier = "reminder";
    }
    ReminderDescriptor update() { return run(bridge.updateReminder(request)); }
    const Reminder& saved() const { return store.allReminders.front(); }

    UserTimeZone berlin{"Europe/Berlin"};
    UpdateReminderRequest request;
};

TEST_F(ReminderUpdate, ChangesOnlyWhatIsGiven) {
    const auto before = saved();
    const auto described = update();
    EXPECT_EQ(saved(), before);
    EXPECT_EQ(described.title, "Water the seeds");
    EXPECT_EQ(described.listTitle, "Errands");
    request.notes = "";
    auto expected = before;
    expected.notes = "";
    update();
    EXPECT_EQ(saved(), expected);
}

TEST_F(ReminderUpdate, SetsEveryField) {
    request.listID = "projects";
    request.title = " Harvest\n";
    request.notes = "All of it";
    request.dueDate = at("2026-12-24T17:00:59Z");
    request.isCompleted = true;
    request.priority = 9;
    EXPECT_EQ(update(), (ReminderDescriptor{"reminder", std::nullopt, "projects", "Projects", "Harvest", "All of it",
                                            at("2026-12-24T17:00:00Z"), true, store.now, 9}));
    EXPECT_EQ(
        saved().dueDate,
        (DateComponents{.year = 2026, .month = 12, .day = 24, .hour = 18, .minute = 0, .timeZone = "Europe/Berlin"}));
    request = {};
    request.identifier = "reminder";
    request.isCompleted = false;
    EXPECT_EQ(update().completionDate, std::nullopt);
}

TEST_F(ReminderUpdate, HasAPriorityFromZeroToNine) {
    for (const auto& [asked, kept] : std::initializer_list<std::pair<int64_t, int64_t>>{
             {-3, 0}, {0, 0}, {4, 4}, {9, 9}, {10, 9}, {std::numeric_limits<int64_t>::min(), 0}}) {
        request.priority = asked;
        EXPECT_EQ(update().priority, kept);
    }
}

TEST_F(ReminderUpdate, ClearsRatherThanSets) {
    request.notes = "kept?";
    request.dueDate = at("2026-12-24T17:00:00Z");
    request.clearNotes = true;
    request.clearDueDate = true;
    const auto described = update();
    EXPECT_EQ(described.notes, std::nullopt);
    EXPECT_EQ(described.dueDate, std::nullopt);
    EXPECT_EQ(saved().notes, std::nullopt);
    EXPECT_EQ(saved().dueDate, std::nullopt);
}

TEST_F(ReminderUpdate, ClearsNothingThatIsNotToBe) {
    const auto before = saved();
    request.clearNotes = false;
    request.clearDueDate = false;
    update();
    EXPECT_EQ(saved(), before);
}

TEST_F(ReminderUpdate, IsCheckedInOrderAndChangesNothing) {
    addEvent("event", "personal", 100, 200);
    allowVanished("gone");
    run(bridge.setReminderList("projects", false));
    const auto before = everything();
    request.title = "";
    request.listID = "projects";
    for (const auto* identifier : {"event", "nothing", ""}) {
        request.identifier = identifier;
        EXPECT_EQ(failureOf(bridge.updateReminder(request)), std::string("Reminder not found: ") + identifier);
    }
    request.identifier = "reminder";
    EXPECT_EQ(failureOf(bridge.updateReminder(request)),
              denied + "Reminder-list access is not authorized for this identifier.");
    request.listID = "gone";
    EXPECT_EQ(failureOf(bridge.updateReminder(request)), "Reminder list not found: gone");
    request.listID = "ideas";
    EXPECT_EQ(failureOf(bridge.updateReminder(request)), malformed + "Reminder title cannot be empty.");
    request.title = "Harvest";
    EXPECT_EQ(failureOf(bridge.updateReminder(request)), "platform: The calendar takes no changes.");
    EXPECT_EQ(everything(), before);
    run(bridge.setReminderList("errands", false));
    EXPECT_EQ(failureOf(bridge.updateReminder(request)), itemNotAllowed);
}

class ReminderDeletion : public CalendarBridgeTest {};

TEST_F(ReminderDeletion, TakesThatReminderAlone) {
    allowAll();
    addReminder("one", "errands", "One");
    addReminder("two", "errands", "Two");
    run(bridge.deleteReminder("one"));
    EXPECT_EQ(idsOf(run(bridge.searchReminders({}))), Strings{"two"});
    EXPECT_EQ(failureOf(bridge.deleteReminder("one")), "Reminder not found: one");
}

TEST_F(ReminderDeletion, IsCheckedInOrderAndChangesNothing) {
    addReminder("reminder", "errands", "Reminder");
    addEvent("event", "personal", 100, 200);
    const auto before = everything();
    EXPECT_EQ(failureOf(bridge.deleteReminder("nothing")), "Reminder not found: nothing");
    EXPECT_EQ(failureOf(bridge.deleteReminder("event")), "Reminder not found: event");
    EXPECT_EQ(failureOf(bridge.deleteReminder("reminder")), itemNotAllowed);
    EXPECT_EQ(everything(), before);
}

} // namespace
} // namespace bridge
