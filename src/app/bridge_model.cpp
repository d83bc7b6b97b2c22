#include "app/bridge_model.h"

#include "base/log.h"

namespace bridge {

BridgeModel::BridgeModel(EventLoop& loop, Platform& platform, BridgeCapabilityPolicy& policy)
    : m_platform(platform),
      dataBridge(*platform.eventStore, *platform.authorization, *platform.defaults),
      contacts(*platform.contactStore, *platform.authorization),
      music(*platform.musicLibrary, *platform.musicCatalog, *platform.scriptEngine, *platform.authorization),
      location(*platform.locationManager, *platform.localSearch, *platform.directions, *platform.alarmClock),
      files(*platform.defaults, *platform.bookmarks, *platform.folderChooser, *platform.trash),
      iWork(files, *platform.scriptEngine),
      capabilityPolicy(policy),
      pairingStore(*platform.defaults, *platform.secureStore, *platform.httpClient),
      m_status(*platform.authorization, *platform.application, policy, dataBridge, location, files),
      m_router(BridgeSet(m_status, dataBridge, contacts, files, iWork, location, music), policy, pairingStore,
               *platform.clock),
      httpServer(loop, m_router, *platform.clock) {
    agentServerURL.set(pairingStore.serverURL());
    // Also the agent's requests may change a setting.
    m_watch = platform.defaults->savingFailure.observe([this](const auto&) { showFailures(); });
    showFailures();
}

Task<> BridgeModel::start() {
    co_await readCredential();
    co_await read();
    httpServer.start();
}

Task<> BridgeModel::refresh() {
    m_actionFailure.reset();
    m_platform.defaults->saveAgain();
    showFailures();
    if (m_credentialFailure) co_await readCredential();
    co_await read();
}

Task<> BridgeModel::refreshOnOpening() {
    return read();
}

Task<> BridgeModel::readCredential() {
    try {
        co_await pairingStore.load();
        m_credentialFailure.reset();
    } catch (const PlatformError& error) {
        m_credentialFailure = "The pairing credential could not be read: " + std::string(error.what());
        log::note(*m_credentialFailure);
    }
    isPaired.set(pairingStore.isPaired());
    showFailures();
}

Task<> BridgeModel::read() {
    const auto wanted = ++m_readingsWanted;
    readState();
    const auto guard = co_await m_reading.lock();
    // Another began after this was asked for, and has read what this would read.
    if (m_readingsDone >= wanted) co_return;
    const auto serving = m_readingsWanted;
    co_await offer(calendars, dataBridge.listCalendars(), m_calendarsFailure, "calendars");
    co_await offer(reminderLists, dataBridge.listReminderLists(), m_reminderListsFailure, "reminder lists");
    m_readingsDone = serving;
}

// Without full access there is nothing to choose from, and that is no failure.
Task<> BridgeModel::offer(Published<std::vector<AppleListDescriptor>>& shown,
                          Task<std::vector<AppleListDescriptor>> listing, Failure& failure, std::string_view what) {
    try {
        auto listed = co_await std::move(listing);
        failure.reset();
        shown.set(std::move(listed));
    } catch (const AppleBridgeError&) {
        failure.reset();
        shown.set({});
    } catch (const PlatformError& error) {
        failure = "The " + std::string(what) + " could not be read: " + error.what();
        log::note(*failure);
    }
    showFailures();
}

void BridgeModel::readState() {
    readPermissions();
    allowedCalendarIDs.set(dataBridge.accessPolicy().calendarIDs());
    allowedReminderListIDs.set(dataBridge.accessPolicy().reminderListIDs());
    enabledCapabilities.set(capabilityPolicy.enabledCapabilities());
    files.refreshRoots();
    readOnlyFolderIDs.set(files.readOnlyRootIDs());
    readServices();
    readLaunchAtLogin();
}

void BridgeModel::readPermissions() {
    const auto& authorization = *m_platform.authorization;
    calendarPermission.set(permissionState(authorization, PrivacyService::calendar));
    remindersPermission.set(permissionState(authorization, PrivacyService::reminders));
    contactsPermission.set(permissionState(authorization, PrivacyService::contacts));
    musicPermission.set(permissionState(authorization, PrivacyService::music));
    locationPermission.set(location.locationPermission());
}

void BridgeModel::readServices() {
    auto names = services.get();
    for (const auto& [group, name] : m_platform.services)
        names[static_cast<size_t>(group)] = name();
    names[static_cast<size_t>(BridgeCapabilityGroup::calendar)] = m_platform.eventStore->description();
    names[static_cast<size_t>(BridgeCapabilityGroup::reminders)] = m_platform.eventStore->description();
    names[static_cast<size_t>(BridgeCapabilityGroup::contacts)] = m_platform.contactStore->description();
    names[static_cast<size_t>(BridgeCapabilityGroup::locationMaps)] =
        "Location: " + m_platform.locationManager->description() +
        ". Places: " + m_platform.localSearch->description() + ". Directions: " + m_platform.directions->description() +
        ".";
    services.set(std::move(names));
}

void BridgeModel::readLaunchAtLogin() {
    const auto status = m_platform.loginItem->status();
    launchAtLoginEnabled.set(status == LoginItemStatus::enabled);
    launchAtLoginRequiresApproval.set(status == LoginItemStatus::requiresApproval);
    launchAtLoginUnavailable.set(status == LoginItemStatus::notFound);
}

std::optional<uint64_t> BridgeModel::failedAction() const {
    return m_actionFailure ? std::optional(m_lastFailed) : std::nullopt;
}

void BridgeModel::finish(uint64_t action, Failure failure) {
    if (failure) m_lastFailed = action;
    m_actionFailure = std::move(failure);
    showFailures();
}

// What the user did comes first, and whether it lasts; then what was read last.
void BridgeModel::showFailures() {
    const Failure* const failures[] = {&m_actionFailure, &m_platform.defaults->savingFailure.get(),
                                       &m_reminderListsFailure, &m_calendarsFailure, &m_credentialFailure};
    for (const auto* failure : failures) {
        if (*failure) return lastError.set(*failure);
    }
    lastError.set(std::nullopt);
}

} // namespace bridge
