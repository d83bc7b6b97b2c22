#include "tools/agent_server/pairing_desk.h"

#include "base/platform_error.h"
#include "base/record.h"

#include <algorithm>
#include <cerrno>
#include <unistd.h>

namespace bridge {

namespace {

struct PairingRequest {
    std::string installationId;
    std::string code;
    static constexpr auto fields() {
        return std::tuple{required("installationId", &PairingRequest::installationId),
                          required("code", &PairingRequest::code)};
    }
};
static_assert(listsEveryMember<PairingRequest>());

struct Granted {
    std::string credential;
    static constexpr auto fields() { return std::tuple{required("credential", &Granted::credential)}; }
};
static_assert(listsEveryMember<Granted>());

struct Refused {
    std::string error;
    static constexpr auto fields() { return std::tuple{required("error", &Refused::error)}; }
};
static_assert(listsEveryMember<Refused>());

std::string randomBytes(size_t count) {
    std::string bytes(count, '\0');
    if (getentropy(bytes.data(), bytes.size()) != 0) throw PlatformError::fromErrno("No random numbers", errno);
    return bytes;
}

std::string base64URL(const std::string& bytes) {
    auto text = encodeBase64(bytes);
    std::replace(text.begin(), text.end(), '+', '-');
    std::replace(text.begin(), text.end(), '/', '_');
    text.erase(text.find_last_not_of('=') + 1);
    return text;
}

PairingDesk::Answer refuse(int status, std::string error) {
    return {status, encodeJSON(Refused{std::move(error)})};
}

} // namespace

std::string PairingDesk::issueCode() {
    // 32 signs that are hard to confuse when typed over.
    constexpr std::string_view alphabet = "23456789ABCDEFGHJKLMNPQRSTUVWXYZ";
    static_assert(alphabet.size() == 32);
    std::string code;
    for (const char byte : randomBytes(8)) {
        if (code.size() == 4) code += '-';
        code += alphabet[static_cast<unsigned char>(byte) % alphabet.size()];
    }
    m_codes.insert(code);
    return code;
}

PairingDesk::Answer PairingDesk::pair(const std::string& body) {
    PairingRequest request;
    try {
        request = decode<PairingRequest>(parseJSON(body));
    } catch (const JSONError& error) {
        return refuse(400, error.what());
    } catch (const DecodingError& error) {
        return refuse(400, error.what());
    }
    if (request.installationId.empty()) return refuse(400, "The installation has no identifier.");
    if (m_codes.erase(request.code) == 0) return refuse(403, "The pairing code is invalid or was already used.");
    m_credentials.push_back(base64URL(randomBytes(32)));
    return {200, encodeJSON(Granted{m_credentials.back()})};
}

} // namespace bridge
