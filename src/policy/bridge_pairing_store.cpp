#include "policy/bridge_pairing_store.h"

#include "base/record.h"
#include "base/text.h"
#include "base/uuid.h"
#include "policy/loopback_url.h"

#include <algorithm>

namespace bridge {

namespace {

struct PairRequest {
    std::string installationId;
    std::string code;
    static constexpr auto fields() {
        return std::tuple{required("installationId", &PairRequest::installationId),
                          required("code", &PairRequest::code)};
    }
};
static_assert(listsEveryMember<PairRequest>());

struct PairResponse {
    std::string credential;
    static constexpr auto fields() { return std::tuple{required("credential", &PairResponse::credential)}; }
};
static_assert(listsEveryMember<PairResponse>());

struct ErrorResponse {
    std::string error;
    static constexpr auto fields() { return std::tuple{required("error", &ErrorResponse::error)}; }
};
static_assert(listsEveryMember<ErrorResponse>());

constexpr std::chrono::seconds pairingTimeout{10};

// A secure store that fails without a status of its own.
constexpr int32_t unknownStatus = -1;

// Takes equally long wherever the first difference is, so a caller can't find the credential byte by byte.
bool equalInConstantTime(std::string_view left, std::string_view right) {
    if (left.size() != right.size()) return false;
    unsigned char difference = 0;
    for (size_t index = 0; index < left.size(); ++index)
        difference = static_cast<unsigned char>(difference | (left[index] ^ right[index]));
    return difference == 0;
}

// A header can't carry control characters and loses spaces at its ends: the server could never show such a credential.
bool fitsInHeader(std::string_view credential) {
    const auto isControl = [](char character) {
        const auto byte = static_cast<unsigned char>(character);
        return byte < 0x20 || byte == 0x7f;
    };
    return !credential.empty() && credential.front() != ' ' && credential.back() != ' ' &&
           std::none_of(credential.begin(), credential.end(), isControl);
}

std::string withoutTrailingSlashes(std::string_view url) {
    return std::string(url.substr(0, url.find_last_not_of('/') + 1));
}

std::string checkedServerURL(std::string_view text) {
    const auto url = trim(text);
    if (!isLoopbackURL(url)) throw PairingError::invalidServerURL();
    return withoutTrailingSlashes(url);
}

std::string checkedCode(std::string_view text) {
    auto code = uppercase(trim(text));
    if (code.empty()) throw PairingError::invalidCode();
    return code;
}

template <typename T> std::optional<T> decodeBody(const std::string& body) {
    try {
        return decode<T>(parseJSON(body));
    } catch (const JSONError&) {
    } catch (const DecodingError&) {
    }
    return std::nullopt;
}

std::string credentialFrom(const HTTPResponse& response) {
    if (response.status < 200 || response.status > 299) {
        const auto answer = decodeBody<ErrorResponse>(response.body);
        throw PairingError::server(answer ? answer->error : "Agent Server rejected the pairing request.");
    }
    auto answer = decodeBody<PairResponse>(response.body);
    if (!answer || !fitsInHeader(answer->credential)) throw PairingError::invalidResponse();
    return std::move(answer->credential);
}

} // namespace

BridgePairingStore::BridgePairingStore(UserDefaults& defaults, SecureStore& secureStore, HTTPClient& client)
    : m_defaults(defaults),
      m_secureStore(secureStore),
      m_client(client),
      m_serverURL(defaults.string(serverURLKey).value_or(std::string(defaultServerURL))) {
    if (auto stored = defaults.string(installationIDKey); stored && !stored->empty()) {
        m_installationID = std::move(*stored);
    } else {
        m_installationID = makeUUID();
        defaults.setString(installationIDKey, m_installationID);
    }
}

Task<> BridgePairingStore::load() {
    const auto guard = co_await m_mutex.lock();
    auto stored = co_await m_secureStore.read(credentialItem());
    m_credential = std::move(stored);
}

bool BridgePairingStore::authorizes(std::optional<std::string_view> header) const {
    constexpr std::string_view scheme = "Bearer ";
    if (!m_credential || !header || !header->starts_with(scheme)) return false;
    return equalInConstantTime(header->substr(scheme.size()), *m_credential);
}

Task<> BridgePairingStore::pair(std::string serverURL, std::string code) {
    const auto url = checkedServerURL(serverURL);
    const auto oneTimeCode = checkedCode(code);
    const auto guard = co_await m_mutex.lock();
    auto credential = co_await requestCredential(url, oneTimeCode);
    co_await storeCredential(credential);
    m_credential = std::move(credential);
    m_serverURL = url;
    m_defaults.setString(serverURLKey, m_serverURL);
}

Task<> BridgePairingStore::unpair() {
    m_credential.reset();
    const auto guard = co_await m_mutex.lock();
    // Once more: an exchange that was under way may have finished while this waited.
    m_credential.reset();
    try {
        co_await m_secureStore.remove(credentialItem());
    } catch (const SecureStoreError& error) {
        throw PairingError::keychain(error.status());
    } catch (const PlatformError&) {
        throw PairingError::keychain(unknownStatus);
    }
}

Task<std::string> BridgePairingStore::requestCredential(std::string serverURL, std::string code) {
    HTTPRequest request;
    request.method = "POST";
    request.url = serverURL + "/apple-bridge/native/pair";
    request.headers = {{"Content-Type", "application/json"}};
    request.body = encodeJSON(PairRequest{m_installationID, std::move(code)});
    request.timeout = pairingTimeout;
    HTTPResponse response;
    try {
        response = co_await m_client.send(std::move(request));
    } catch (const PlatformError& error) {
        throw PairingError::server(error.what());
    }
    co_return credentialFrom(response);
}

Task<> BridgePairingStore::storeCredential(std::string credential) {
    try {
        co_await m_secureStore.replace(credentialItem(), std::move(credential));
    } catch (const SecureStoreError& error) {
        throw PairingError::keychain(error.status());
    } catch (const PlatformError&) {
        throw PairingError::keychain(unknownStatus);
    }
}

} // namespace bridge
