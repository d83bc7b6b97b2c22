#include "app/bridge_model.h"

namespace bridge {

namespace {

// Also when the exchange is dropped half-way.
struct FinallyNotInProgress {
    Published<bool>& inProgress;
    ~FinallyNotInProgress() { inProgress.set(false); }
};

} // namespace

Task<> BridgeModel::pair(std::string code) {
    // One exchange at a time: a second click while one is running means the same one.
    if (pairingInProgress.get()) co_return;
    pairingInProgress.set(true);
    const auto number = ++m_pairingActions;
    std::string message = "Paired securely. Unauthenticated requests are now rejected.";
    {
        const FinallyNotInProgress finally{pairingInProgress};
        pairingStatusMessage.set(std::nullopt);
        try {
            co_await pairingStore.pair(agentServerURL.get(), std::move(code));
        } catch (const std::exception& error) {
            message = std::string("Pairing failed: ") + error.what();
        }
    }
    isPaired.set(pairingStore.isPaired());
    agentServerURL.set(pairingStore.serverURL());
    if (number != m_pairingActions) co_return;
    if (pairingStore.isPaired()) m_credentialFailure.reset();
    showFailures();
    pairingStatusMessage.set(std::move(message));
}

Task<> BridgeModel::unpair() {
    const auto number = ++m_pairingActions;
    // At once: the store lets nobody in from here on, however long it takes to remove the credential.
    isPaired.set(false);
    std::string message = "Unpaired. Apple Bridge will reject every request until it is paired again.";
    try {
        co_await pairingStore.unpair();
    } catch (const std::exception& error) {
        message = std::string("Unpairing failed: ") + error.what();
    }
    isPaired.set(pairingStore.isPaired());
    if (number == m_pairingActions) pairingStatusMessage.set(std::move(message));
}

} // namespace bridge
