#pragma once

#include "base/async_mutex.h"
#include "base/task.h"
#include "platform/http_client.h"
#include "platform/secure_store.h"
#include "platform/user_defaults.h"
#include "policy/pairing_error.h"

#include <optional>
#include <string>
#include <string_view>

namespace bridge {

// The bond with the one Agent Server that may use the bridge: made with a one-time code, kept as a credential in the
// platform's secure store. The user makes and breaks it; the server only asks. Main thread only.
class BridgePairingStore {
public:
    static constexpr std::string_view installationIDKey = "agentPairing.installationID";
    static constexpr std::string_view serverURLKey = "agentPairing.serverURL";
    static constexpr std::string_view defaultServerURL = "http://127.0.0.1:3000";
    static constexpr std::string_view credentialService = "com.brindlefox.apple-bridge.agent-server";
    static constexpr std::string_view credentialAccount = "credential";
    static_assert(credentialService.size() == 40);
    // Where the credential lies in the secure store.
    static SecureItem credentialItem() { return {std::string(credentialService), std::string(credentialAccount)}; }

    // Reads the settings, and gives the installation its identifier when it has none. All three must outlive the store
    // and its tasks. Nobody is authorized before load() is done.
    BridgePairingStore(UserDefaults& defaults, SecureStore& secureStore, HTTPClient& client);

    // Reads the credential. Throws PlatformError when the secure store can't be read; the bridge is then unpaired until
    // this is tried again or it is paired anew.
    Task<> load();

    const std::string& installationID() const { return m_installationID; }
    const std::optional<std::string>& credential() const { return m_credential; }
    const std::string& serverURL() const { return m_serverURL; }

    bool isPaired() const { return m_credential && !m_credential->empty(); }

    // Whether a request with this authorization header, or without one, comes from the paired Agent Server.
    bool authorizes(std::optional<std::string_view> header) const;

    // Trades the one-time code for a credential and stores it. Throws PairingError and nothing else; what was stored
    // is then as it was. One exchange runs at a time, a second waits for the first.
    Task<> pair(std::string serverURL, std::string code);

    // From the call on nobody is authorized, whatever follows. Throws PairingError (`keychain`) when the secure store
    // could not remove the credential, which would then be back at the next start.
    Task<> unpair();

private:
    Task<std::string> requestCredential(std::string serverURL, std::string code);
    Task<> storeCredential(std::string credential);

    UserDefaults& m_defaults;
    SecureStore& m_secureStore;
    HTTPClient& m_client;
    AsyncMutex m_mutex;
    std::string m_installationID;
    std::optional<std::string> m_credential;
    std::string m_serverURL;
};

} // namespace bridge
