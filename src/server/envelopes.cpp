#include "server/envelopes.h"

namespace bridge {

namespace {
// For when even the error can't be written down.
constexpr std::string_view lastResort = R"({"error":{"code":"encoding_error"}})";
} // namespace

BridgeResponse Responder::error(const WireError& error, std::string_view message) const {
    try {
        const BridgeErrorEnvelope envelope{m_requestId, {std::string(error.code), std::string(message)}, m_clock.now()};
        return {error.status, encodeJSON(envelope), {}};
    } catch (const JSONError&) {
        return {error.status, std::string(lastResort), {}};
    }
}

BridgeResponse Responder::failure(const std::exception_ptr& thrown) const {
    try {
        std::rethrow_exception(thrown);
    } catch (const AppleBridgeError& known) {
        return error({errorCode(&known), errorStatus(&known)}, known.message());
    } catch (const std::exception& other) {
        return error({errorCode(nullptr), errorStatus(nullptr)}, other.what());
    } catch (...) {
        return error({errorCode(nullptr), errorStatus(nullptr)}, "An unknown failure.");
    }
}

} // namespace bridge
