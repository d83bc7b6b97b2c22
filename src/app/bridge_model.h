#pragma once

#include "app/platform.h"
#include "base/async_mutex.h"
#include "base/published.h"
#include "base/task_set.h"
#include "bridges/calendar/apple_data_bridge.h"
#include "bridges/common/permission_state.h"
#include "bridges/contacts/contact_data_bridge.h"
#include "bridges/files/file_data_bridge.h"
#include "bridges/iwork/iwork_automation_bridge.h"
#include "bridges/location/location_data_bridge.h"
#include "bridges/music/music_data_bridge.h"
#include "policy/bridge_capability_policy.h"
#include "policy/bridge_pairing_store.h"
#include "server/bridge_http_server.h"
#include "server/permission_snapshot.h"

#include <set>

namespace bridge {

// What helps the user to get at a service that is not granted in full.
enum class AccessAction {
    none,        // nothing does, or nothing is missing
    grantAccess, // "Grant access": requestAccess() asks the user, also one who has said no before
    openSettings // "Open Settings": the platform has the switch, so openPrivacySettings()
};

// Owns everything and lives as long as the process; publishes what the user sees and carries out what the user does.
// Main thread only. No display is needed. `loop`, `platform` and `policy` outlive it.
//
// What the user does is a task where it may have to wait; perform() keeps it for whoever can't. Any number of them may
// be under way: each makes its change in its turn, and what is published afterwards is never older than what was
// published before. Failures are not thrown but shown: those of pairing in `pairingStatusMessage`, all others in
// `lastError`, where one stays until the user refreshes or such an action succeeds. A setting that can't be saved
// holds all the same and is shown as it holds; that it won't last is in `lastError` until it is saved.
class BridgeModel {
public:
    // The policy is loaded by the caller first: whether this is a fresh installation shows only before anything else
    // has stored a setting.
    BridgeModel(EventLoop& loop, Platform& platform, BridgeCapabilityPolicy& policy);

    // The rest of start-up: the stored credential, the first refresh, the server. Nothing in it is fatal; what goes
    // wrong is in `lastError` or in the server's state.
    Task<> start();

    // For the button: takes away what went wrong before, and reads everything anew that may have changed elsewhere:
    // permissions, calendars and lists, which of them are allowed, folders, enabled capabilities, launch at login, what
    // serves each group, and a credential that could not be read. What can't be read is in `lastError`, and what was
    // known of it before stays. Settings that could not be saved are saved, or stay in `lastError`. Those that are
    // asked for while one is under way become one more.
    Task<> refresh();
    // For the dashboard when it comes up: an action may have failed while nobody looked, so that failure stays to be
    // read; nor is the credential tried again, for which the platform might ask the user.
    Task<> refreshOnOpening();

    // Permissions. Asking ends with a refresh; when nobody is to be asked any more nothing but that happens.
    const Published<BridgePermissionState>& permission(PrivacyService service) const;
    // The one that the group depends on; files and iWork depend on folders and on none of these.
    static std::optional<PrivacyService> permissionOf(BridgeCapabilityGroup group);
    // For the state that is published.
    AccessAction accessAction(PrivacyService service) const;
    Task<> requestAccess(PrivacyService service);
    // Shows the platform's page.
    void openPrivacySettings();

    // Capabilities. Stored and published at once, whether they can be saved or not.
    void setEnabled(BridgeCapability capability, bool enabled);
    void setGroupEnabled(BridgeCapabilityGroup group, bool enabled);
    // What stands behind the group, for a quiet line: "Evolution Data Server", "this computer", "MPD", or what has to
    // be installed. As `services` has it.
    std::string servedBy(BridgeCapabilityGroup group) const;

    // Calendars and reminder lists that the agent may use. Each ends with a refresh.
    Task<> setCalendar(std::string identifier, bool authorized);
    Task<> setReminderList(std::string identifier, bool authorized);
    Task<> setAllCalendars(bool authorized);
    Task<> setAllReminderLists(bool authorized);

    // Folders are in `files.roots`. While the user is choosing one, choosing another does nothing.
    Task<> addFolder();
    void removeFolder(std::string id);

    // Where the user has to approve it, turning it on shows where.
    void setLaunchAtLogin(bool enabled);

    // With the one-time code that the user typed, at `agentServerURL`. While one exchange is under way another does
    // nothing. An unpairing meanwhile wins: what the exchange brings is thrown away.
    Task<> pair(std::string code);
    Task<> unpair();

    // Keeps the task until it is done, or the model goes: `model.perform(model.pair(code))`.
    void perform(Task<> action) { m_actions.start(std::move(action)); }

    Published<BridgePermissionState> calendarPermission{BridgePermissionState::unknown};
    Published<BridgePermissionState> remindersPermission{BridgePermissionState::unknown};
    Published<BridgePermissionState> contactsPermission{BridgePermissionState::unknown};
    Published<BridgePermissionState> musicPermission{BridgePermissionState::unknown};
    Published<BridgePermissionState> locationPermission{BridgePermissionState::unknown};
    // Everything that the store offers; empty without full access.
    Published<std::vector<AppleListDescriptor>> calendars;
    Published<std::vector<AppleListDescriptor>> reminderLists;
    Published<std::set<std::string>> allowedCalendarIDs;
    Published<std::set<std::string>> allowedReminderListIDs;
    Published<std::set<BridgeCapability>> enabledCapabilities;
    Published<bool> launchAtLoginEnabled{false};
    Published<bool> launchAtLoginRequiresApproval{false};
    Published<bool> launchAtLoginUnavailable{false};
    Published<std::string> agentServerURL;
    Published<bool> isPaired{false};
    Published<bool> pairingInProgress{false};
    // Nothing while an exchange is under way.
    Published<std::optional<std::string>> pairingStatusMessage;
    Published<std::optional<std::string>> lastError;
    // What the user does is counted as it begins, and this is the number of the last; pairing and Refresh don't count.
    uint64_t actionsBegun() const { return m_actionsBegun; }
    // The action that `lastError` is about; nothing when it is about none.
    std::optional<uint64_t> failedAction() const;
    // By the number of the group.
    Published<std::array<std::string, capabilityGroupCount>> services;
    // Those of `files.roots` in which nothing can be changed.
    Published<std::set<std::string>> readOnlyFolderIDs;

private:
    using Failure = std::optional<std::string>;

    // What is known without waiting, then the lists, which may be on another machine.
    Task<> read();
    void readState();
    void readPermissions();
    void readServices();
    void readLaunchAtLogin();
    Task<> readCredential();
    Task<> offer(Published<std::vector<AppleListDescriptor>>& shown, Task<std::vector<AppleListDescriptor>> listing,
                 Failure& failure, std::string_view what);

    Task<> act(Task<> action);
    Task<> actInTurn(Task<> action);
    Task<> askForAccess(PrivacyService service);
    bool wasAnswered(PrivacyService service) const;
    Task<> chooseFolder();
    uint64_t begin() { return ++m_actionsBegun; }
    // Of the action of this number, and whether it failed.
    void finish(uint64_t action, Failure failure);
    void showFailures();

    Platform& m_platform;

    uint64_t m_actionsBegun = 0;
    uint64_t m_lastFailed = 0; // of them
    Failure m_actionFailure;
    Failure m_credentialFailure;
    Failure m_calendarsFailure;
    Failure m_reminderListsFailure;

    AsyncMutex m_turns;   // of changes to what is allowed: the last click counts
    AsyncMutex m_reading; // of the lists: what was asked for later is shown later
    uint64_t m_readingsWanted = 0;
    uint64_t m_readingsDone = 0; // as many of them as the last reading was for
    uint64_t m_pairingActions = 0;
    bool m_isChoosingFolder = false;

public:
    AppleDataBridge dataBridge;
    ContactDataBridge contacts;
    MusicDataBridge music;
    LocationDataBridge location;
    FileDataBridge files;
    IWorkAutomationBridge iWork;
    BridgeCapabilityPolicy& capabilityPolicy;
    BridgePairingStore pairingStore;

private:
    BridgeStatus m_status;
    BridgeRouter m_router;

public:
    // Its `state` says whether it listens or why not; start() tries again.
    BridgeHTTPServer httpServer;

private:
    Subscription m_watch;
    TaskSet m_actions; // goes first
};

} // namespace bridge
