#include "server/permission_snapshot.h"

#include "adapters/posix/posix_bookmarks.h"
#include "adapters/xdg/home_trash.h"
#include "bridges/calendar/apple_data_bridge.h"
#include "bridges/files/file_data_bridge.h"
#include "bridges/location/location_data_bridge.h"
#include "platform/application_info.h"
#include "policy/bridge_capability_policy.h"
#include "tests/fakes/failing_event_store.h"
#include "tests/fakes/gated_event_store.h"
#include "tests/fakes/manual_alarm_clock.h"
#include "tests/fakes/memory_folder_chooser.h"
#include "tests/fakes/memory_user_defaults.h"
#include "tests/fakes/sample_event_store.h"
#include "tests/fakes/scripted_authorization.h"
#include "tests/fakes/scripted_directions.h"
#include "tests/fakes/scripted_local_search.h"
#include "tests/fakes/scripted_location_manager.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

namespace bridge {
namespace {

using State = BridgePermissionState;
using Counts = BridgeResourceAccessSnapshot;

class Version : public ApplicationInfo {
public:
    std::optional<std::string> known = "1.2.3";
    std::optional<std::string> shortVersion() const override { return known; }
};

class PermissionSnapshot : public testing::Test {
protected:
    template <typename T> static T taken(Task<T> task) {
        task.start();
        return task.take();
    }
    BridgePermissionSnapshot snapshot() { return taken(status.permissions()); }
    void allow(EntityType entityType, const char* identifier) {
        auto task = entityType == EntityType::event ? data.setCalendar(identifier, true)
                                                    : data.setReminderList(identifier, true);
        taken(std::move(task));
    }

    SampleEventStore store;
    FailingEventStore failing{store};
    ScriptedAuthorization authorization;
    MemoryUserDefaults defaults;
    AppleDataBridge data{failing, authorization, defaults};
    TemporaryFolder folder;
    PosixBookmarks bookmarks;
    MemoryFolderChooser chooser;
    HomeTrash trash{folder.file("Trash")};
    FileDataBridge files{defaults, bookmarks, chooser, trash};
    ScriptedLocationManager locationManager;
    ScriptedLocalSearch localSearch;
    ScriptedDirections mapDirections;
    ManualAlarmClock alarms;
    LocationDataBridge location{locationManager, localSearch, mapDirections, alarms};
    Version version;
    BridgeCapabilityPolicy policy{defaults};
    BridgeStatus status{authorization, version, policy, data, location, files};
};

TEST_F(PermissionSnapshot, CountsWhatIsAllowedAndAvailable) {
    EXPECT_EQ(snapshot().calendarResources, (Counts{0, 3}));
    allow(EntityType::event, "team");
    allow(EntityType::event, "personal");
    allow(EntityType::reminder, "ideas");
    EXPECT_EQ(snapshot().calendarResources, (Counts{2, 3}));
    EXPECT_EQ(snapshot().reminderListResources, (Counts{1, 3}));
    // Gone, but still on the list.
    std::erase_if(store.allCalendars, [](const Calendar& calendar) { return calendar.id == "team"; });
    EXPECT_EQ(snapshot().calendarResources, (Counts{1, 2}));
}

TEST_F(PermissionSnapshot, AsksTheStoreOnceForEachKind) {
    snapshot();
    EXPECT_EQ(failing.calls, (std::vector<WatchedEventStore::Call>{{"calendars", ""}, {"calendars", ""}}));
}

TEST_F(PermissionSnapshot, CountsNothingWithoutFullAccessAndDoesNotAsk) {
    allow(EntityType::event, "team");
    allow(EntityType::reminder, "ideas");
    failing.reset();
    for (const std::optional<int>& number : {std::optional(0), std::optional(1), std::optional(2), std::optional(4),
                                             std::optional(17), std::optional<int>()}) {
        authorization.statuses = {{PrivacyService::calendar, number}, {PrivacyService::reminders, number}};
        EXPECT_EQ(snapshot().calendarResources, Counts());
        EXPECT_EQ(snapshot().reminderListResources, Counts());
    }
    EXPECT_TRUE(failing.calls.empty());
    authorization.statuses = {{PrivacyService::calendar, 2}};
    EXPECT_EQ(snapshot().calendarResources, Counts());
    EXPECT_EQ(snapshot().reminderListResources, (Counts{1, 3}));
}

TEST_F(PermissionSnapshot, IsMadeWhateverTheStoreDoes) {
    allow(EntityType::event, "team");
    failing.reset();
    failing.failingCall = 0;
    EXPECT_EQ(snapshot().calendarResources, Counts());
    failing.reset();
    failing.failingCall = 0;
    EXPECT_EQ(snapshot().reminderListResources, (Counts{0, 3}));
    failing.isLost = true;
    const auto made = snapshot();
    EXPECT_EQ(made.calendar, State::fullAccess);
    EXPECT_EQ(made.calendarResources, Counts());
    EXPECT_EQ(made.reminderListResources, Counts());
    EXPECT_EQ(made.capabilities.size(), capabilityCount);
}

TEST_F(PermissionSnapshot, HasEachStateByItsOwnNumbers) {
    authorization.statuses = {{PrivacyService::calendar, 4},
                              {PrivacyService::reminders, 7},
                              {PrivacyService::contacts, 4},
                              {PrivacyService::music, 2}};
    // Not what another source of permissions says of it.
    locationManager.status = 4;
    const auto made = snapshot();
    EXPECT_EQ(made.calendar, State::writeOnly);
    EXPECT_EQ(made.reminders, State::unknown);
    EXPECT_EQ(made.contacts, State::limited);
    EXPECT_EQ(made.music, State::restricted);
    EXPECT_EQ(made.location, State::unknown);
    EXPECT_EQ(made.health, State::unavailable);
    EXPECT_EQ(made.home, State::unavailable);
}

TEST_F(PermissionSnapshot, CountsFoldersAndTellsEverySwitch) {
    std::filesystem::create_directory(folder / "Documents");
    ASSERT_TRUE(files.addFolder(folder.file("Documents")));
    policy.setEnabled(BridgeCapability::filesRead, true);
    const auto made = snapshot();
    EXPECT_EQ(made.fileRoots, 1);
    EXPECT_EQ(made.capabilities, policy.capabilityStates());
}

TEST_F(PermissionSnapshot, StandsInTheHealthWithNameAndVersion) {
    const auto health = taken(status.health());
    EXPECT_EQ(health.name, "Brindlefox Apple Bridge");
    EXPECT_EQ(health.version, "1.2.3");
    EXPECT_EQ(encodeJSON(health.permissions), encodeJSON(snapshot()));
    version.known = std::nullopt;
    EXPECT_EQ(taken(status.health()).version, "unknown");
}

TEST_F(PermissionSnapshot, WaitsForTheStoreAndCanBeDropped) {
    GatedEventStore slow(store);
    AppleDataBridge slowData(slow, authorization, defaults);
    BridgeStatus slowStatus(authorization, version, policy, slowData, location, files);
    slow.hold("calendars", "", GatedEventStore::When::beforeEffect);
    {
        auto dropped = slowStatus.health();
        dropped.start();
        EXPECT_EQ(slow.waiting(), 1u);
    }
    EXPECT_EQ(slow.waiting(), 0u);
    auto health = slowStatus.health();
    health.start();
    slow.release();
    EXPECT_FALSE(health.done());
    slow.release();
    EXPECT_EQ(health.take().permissions.reminderListResources, (Counts{0, 3}));
}

} // namespace
} // namespace bridge
