#pragma once

#include "app/platform.h"
#include "base/published.h"
#include "bridges/calendar/apple_data_bridge.h"
#include "bridges/common/permission_state.h"
#include "bridges/contacts/contact_data_bridge.h"
#include "bridges/files/file_data_bridge.h"
#include "bridges/iwork/iwork_automation_bridge.h"
#include "bridges/music/music_data_bridge.h"
#include "policy/bridge_capability_policy.h"
#include "policy/bridge_pairing_store.h"
#include "server/bridge_http_server.h"
#include "server/permission_snapshot.h"

#include <set>

namespace bridge {

// Owns everything and lives as long as the process; publishes what the user sees and carries out what the user does.
// Main thread only. No display is needed. `loop`, `platform` and `policy` outlive it.
class BridgeModel {
public:
    // The policy is loaded by the caller first: whether this is a fresh installation shows only before anything else
    // has stored a setting.
    BridgeModel(EventLoop& loop, Platform& platform, BridgeCapabilityPolicy& policy);

    // The rest of start-up: the stored credential, the first refresh, the server. Nothing in it is fatal; what goes
    // wrong is in `lastError` or in the server's state.
    Task<> start();

    // Reads every permission, the calendars and lists, which of them are allowed, and the enabled capabilities anew.
    // What fails is in `lastError`, and what was known of it before stays.
    Task<> refresh();

    // What the user does with calendars and reminder lists. Each ends with a refresh; its failure is in `lastError`.
    Task<> requestCalendarAccess();
    Task<> requestRemindersAccess();
    Task<> setCalendar(std::string identifier, bool authorized);
    Task<> setReminderList(std::string identifier, bool authorized);
    Task<> setAllCalendars(bool authorized);
    Task<> setAllReminderLists(bool authorized);

    // With the one-time code that the user typed, at `agentServerURL`. Its outcome is in `pairingStatusMessage`.
    Task<> pair(std::string code);
    Task<> unpair();

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
    Published<std::string> agentServerURL;
    Published<bool> isPaired{false};
    Published<bool> pairingInProgress{false};
    Published<std::optional<std::string>> pairingStatusMessage;
    Published<std::optional<std::string>> lastError;

private:
    void readPermissions();
    Task<> readState();
    Task<> offer(Published<std::vector<AppleListDescriptor>>& shown, Task<std::vector<AppleListDescriptor>> listing,
                 std::string_view what);
    Task<> act(Task<> action);

    Platform& m_platform;

public:
    AppleDataBridge dataBridge;
    ContactDataBridge contacts;
    FileDataBridge files;
    IWorkAutomationBridge iwork;
    MusicDataBridge music;
    BridgeCapabilityPolicy& capabilityPolicy;
    BridgePairingStore pairingStore;

private:
    BridgeStatus m_status;
    BridgeRouter m_router;

public:
    BridgeHTTPServer httpServer;
};

} // namespace bridge
