#include "calendar_bridge_test.h"
#include "every_operation.h"
#include "tests/fakes/failing_event_store.h"

#include <set>

namespace bridge {
namespace {

class Failures : public CalendarBridgeTest {
protected:
    // The store as the operations want it, and no failure.
    void refill() {
        store = SampleEventStore();
        addEvent("event", "personal", 100, 200);
        addReminder("reminder", "errands", "Reminder");
        allowAll();
        failing.reset();
    }
    // A bridge over the failing store that has read the allow-lists as they are now.
    AppleDataBridge fresh() { return AppleDataBridge(failing, authorization, defaults); }

    FailingEventStore failing{store};
};

constexpr const char* lost = "platform: The calendars can't be reached.";

TEST_F(Failures, NoOperationHidesAStoreThatIsLost) {
    EXPECT_EQ(everyOperation().size(), 24u);
    for (const auto& operation : everyOperation()) {
        refill();
        auto over = fresh();
        failing.isLost = true;
        const auto before = everything(over);
        EXPECT_EQ(failureOf(operation.call(over)), lost) << operation.name;
        EXPECT_EQ(everything(over), before) << operation.name;
        EXPECT_FALSE(failing.calls.empty()) << operation.name;
    }
}

TEST_F(Failures, EachFailingCallOfEachOperationShowsAndChangesNothing) {
    for (const auto& operation : everyOperation()) {
        refill();
        auto counting = fresh();
        ASSERT_EQ(failureOf(operation.call(counting)), "") << operation.name;
        const size_t calls = failing.calls.size();
        ASSERT_GT(calls, 0u) << operation.name;
        for (size_t call = 0; call < calls; ++call) {
            refill();
            auto over = fresh();
            failing.failingCall = call;
            const auto before = everything(over);
            EXPECT_EQ(failureOf(operation.call(over)), lost) << operation.name << ", call " << call;
            EXPECT_EQ(everything(over), before) << operation.name << ", call " << call;
            // And the next attempt finds the way free.
            failing.reset();
            EXPECT_EQ(failureOf(operation.call(over)), "") << operation.name << ", call " << call;
        }
    }
}

TEST_F(Failures, NothingIsAskedOfTheStoreAfterAChange) {
    const std::set<std::string> changes{"addCalendar", "renameCalendar", "removeCalendar", "saveEvent",
                                        "removeEvent", "saveReminder",   "removeReminder"};
    std::set<std::string> made;
    for (const auto& operation : everyOperation()) {
        refill();
        auto over = fresh();
        run(operation.call(over));
        for (size_t index = 0; index < failing.calls.size(); ++index) {
            if (!changes.contains(failing.calls[index].name)) continue;
            made.insert(failing.calls[index].name);
            EXPECT_EQ(index + 1, failing.calls.size()) << operation.name;
        }
    }
    EXPECT_EQ(made, changes);
}

TEST_F(Failures, TheOperationsTogetherUseTheWholePort) {
    std::set<std::string> used;
    for (const auto& operation : everyOperation()) {
        refill();
        auto over = fresh();
        run(operation.call(over));
        for (const auto& call : failing.calls)
            used.insert(call.name);
    }
    EXPECT_EQ(used.size(), 14u);
}

TEST_F(Failures, WithoutFullAccessNothingIsAskedOfTheStore) {
    for (const auto& status : {std::optional(0), std::optional(1), std::optional(2), std::optional(4), std::optional(5),
                               std::optional(-1), std::optional<int>()}) {
        for (const auto& operation : everyOperation()) {
            refill();
            auto over = fresh();
            const bool isEvent = operation.entityType == EntityType::event;
            authorization.statuses = {{isEvent ? PrivacyService::calendar : PrivacyService::reminders, status}};
            const auto before = everything(over);
            EXPECT_EQ(failureOf(operation.call(over)),
                      std::string("Full access to ") + (isEvent ? "Calendar" : "Reminders") + " has not been granted.")
                << operation.name;
            EXPECT_TRUE(failing.calls.empty()) << operation.name;
            EXPECT_EQ(everything(over), before) << operation.name;
            authorization.statuses.clear();
        }
    }
}

TEST_F(Failures, OneServiceNeedsOnlyItsOwnPermission) {
    authorization.statuses = {{PrivacyService::reminders, 2}};
    EXPECT_EQ(failureOf(bridge.listCalendars()), "");
    authorization.statuses = {{PrivacyService::calendar, 2}};
    EXPECT_EQ(failureOf(bridge.listReminderLists()), "");
}

TEST_F(Failures, TakingEverythingBackNeedsNoStore) {
    refill();
    auto over = fresh();
    failing.isLost = true;
    EXPECT_EQ(failureOf(over.setAllCalendars(false)), "");
    EXPECT_EQ(failureOf(over.setAllReminderLists(false)), "");
    EXPECT_TRUE(over.accessPolicy().calendarIDs().empty());
    EXPECT_TRUE(over.accessPolicy().reminderListIDs().empty());
}

TEST_F(Failures, TheCountsNeverFail) {
    refill();
    auto over = fresh();
    EXPECT_EQ(run(over.calendarResources()), (BridgeResourceAccessSnapshot{3, 3}));
    EXPECT_EQ(run(over.reminderListResources()), (BridgeResourceAccessSnapshot{3, 3}));
    EXPECT_EQ(failing.calls.size(), 2u);
    failing.isLost = true;
    EXPECT_EQ(run(over.calendarResources()), BridgeResourceAccessSnapshot());
    EXPECT_EQ(run(over.reminderListResources()), BridgeResourceAccessSnapshot());
}

} // namespace
} // namespace bridge
