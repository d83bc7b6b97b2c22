#include "app/bridge_model.h"

#include "base/log.h"

namespace bridge {

namespace {

// Also when the exchange is dropped half-way.
struct FinallyNotInProgress {
    Published<bool>& inProgress;
    ~FinallyNotInProgress() { inProgress.set(false); }
};

} // namespace

BridgeModel::BridgeModel(EventLoop& loop, Platform& platform, BridgeCapabilityPolicy& policy)
    : m_platform(platform),
      dataBridge(*platform.eventStore, *platform.authorization, *platform.defaults),
      contacts(*platform.contactStore, *platform.authorization),
      files(*platform.defaults, *platform.bookmarks, *platform.folderChooser, *platform.trash),
      iwork(files, *platform.scriptEngine),
      music(*platform.musicLibrary, *platform.musicCatalog, *platform.scriptEngine, *platform.authorization),
      capabilityPolicy(policy),
      pairingStore(*platform.defaults, *platform.secureStore, *platform.httpClient),
      m_status(*platform.authorization, *platform.application, policy, dataBridge, files),
      m_router(BridgeSet(m_status, dataBridge, contacts, files, iwork, music), policy, pairingStore, *platform.clock),
      httpServer(loop, m_router, *platform.clock) {
    agentServerURL.set(pairingStore.serverURL());
}

Task<> BridgeModel::start() {
    try {
        co_await pairingStore.load();
    } catch (const PlatformError& error) {
        lastError.set("The pairing credential could not be read: " + std::string(error.what()));
        log::note(*lastError.get());
    }
    isPaired.set(pairingStore.isPaired());
    co_await readState();
    httpServer.start();
}

Task<> BridgeModel::refresh() {
    lastError.set(std::nullopt);
    co_await readState();
}

Task<> BridgeModel::requestCalendarAccess() {
    return act(dataBridge.requestCalendarAccess());
}

Task<> BridgeModel::requestRemindersAccess() {
    return act(dataBridge.requestRemindersAccess());
}

Task<> BridgeModel::setCalendar(std::string identifier, bool authorized) {
    return act(dataBridge.setCalendar(std::move(identifier), authorized));
}

Task<> BridgeModel::setReminderList(std::string identifier, bool authorized) {
    return act(dataBridge.setReminderList(std::move(identifier), authorized));
}

Task<> BridgeModel::setAllCalendars(bool authorized) {
    return act(dataBridge.setAllCalendars(authorized));
}

Task<> BridgeModel::setAllReminderLists(bool authorized) {
    return act(dataBridge.setAllReminderLists(authorized));
}

Task<> BridgeModel::act(Task<> action) {
    std::optional<std::string> failure;
    try {
        co_await std::move(action);
    } catch (const std::exception& error) {
        failure = error.what();
    }
    co_await refresh();
    if (failure) lastError.set(std::move(failure));
}

void BridgeModel::readPermissions() {
    const auto& authorization = *m_platform.authorization;
    calendarPermission.set(permissionState(authorization, PrivacyService::calendar));
    remindersPermission.set(permissionState(authorization, PrivacyService::reminders));
    contactsPermission.set(permissionState(authorization, PrivacyService::contacts));
    musicPermission.set(permissionState(authorization, PrivacyService::music));
    locationPermission.set(permissionState(authorization, PrivacyService::location));
}

Task<> BridgeModel::readState() {
    readPermissions();
    allowedCalendarIDs.set(dataBridge.accessPolicy().calendarIDs());
    allowedReminderListIDs.set(dataBridge.accessPolicy().reminderListIDs());
    enabledCapabilities.set(capabilityPolicy.enabledCapabilities());
    co_await offer(calendars, dataBridge.listCalendars(), "calendars");
    co_await offer(reminderLists, dataBridge.listReminderLists(), "reminder lists");
}

// Without full access there is nothing to choose from, and that is no failure.
Task<> BridgeModel::offer(Published<std::vector<AppleListDescriptor>>& shown,
                          Task<std::vector<AppleListDescriptor>> listing, std::string_view what) {
    try {
        auto listed = co_await std::move(listing);
        shown.set(std::move(listed));
    } catch (const AppleBridgeError&) {
        shown.set({});
    } catch (const PlatformError& error) {
        lastError.set("The " + std::string(what) + " could not be read: " + error.what());
        log::note(*lastError.get());
    }
}

Task<> BridgeModel::pair(std::string code) {
    // One exchange at a time: a second click while one is running means the same one.
    if (pairingInProgress.get()) co_return;
    pairingInProgress.set(true);
    std::string message = "Paired securely. Unauthenticated requests are now rejected.";
    try {
        const FinallyNotInProgress finally{pairingInProgress};
        co_await pairingStore.pair(agentServerURL.get(), std::move(code));
    } catch (const std::exception& error) {
        message = std::string("Pairing failed: ") + error.what();
    }
    isPaired.set(pairingStore.isPaired());
    agentServerURL.set(pairingStore.serverURL());
    pairingStatusMessage.set(std::move(message));
}

Task<> BridgeModel::unpair() {
    std::string message = "Unpaired. Apple Bridge will reject every request until it is paired again.";
    try {
        co_await pairingStore.unpair();
    } catch (const std::exception& error) {
        message = std::string("Unpairing failed: ") + error.what();
    }
    isPaired.set(pairingStore.isPaired());
    pairingStatusMessage.set(std::move(message));
}

} // namespace bridge
