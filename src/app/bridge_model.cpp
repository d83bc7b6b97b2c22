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
      files(*platform.defaults, *platform.bookmarks, *platform.folderChooser, *platform.trash),
      capabilityPolicy(policy),
      pairingStore(*platform.defaults, *platform.secureStore, *platform.httpClient),
      m_status(*platform.authorization, *platform.application, policy, files),
      m_router(BridgeSet(m_status, files), policy, pairingStore, *platform.clock),
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
    refresh();
    httpServer.start();
}

void BridgeModel::refresh() {
    const auto& authorization = *m_platform.authorization;
    calendarPermission.set(permissionState(authorization, PrivacyService::calendar));
    remindersPermission.set(permissionState(authorization, PrivacyService::reminders));
    contactsPermission.set(permissionState(authorization, PrivacyService::contacts));
    musicPermission.set(permissionState(authorization, PrivacyService::music));
    locationPermission.set(permissionState(authorization, PrivacyService::location));
    enabledCapabilities.set(capabilityPolicy.enabledCapabilities());
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
