#pragma once

#include "base/apple_bridge_error.h"
#include "base/record.h"
#include "platform/clock.h"
#include "server/bridge_response.h"
#include "server/wire_errors.h"

#include <exception>

namespace bridge {

// The body of POST /v1/execute.
struct BridgeRequestEnvelope {
    std::optional<std::string> requestId; // the caller's own; echoed
    std::string operation;
    std::optional<JSONValue> payload;
    std::optional<bool> confirmed; // absent counts as false

    static constexpr auto fields() {
        return std::tuple{optional("requestId", &BridgeRequestEnvelope::requestId),
                          required("operation", &BridgeRequestEnvelope::operation),
                          optional("payload", &BridgeRequestEnvelope::payload),
                          optional("confirmed", &BridgeRequestEnvelope::confirmed)};
    }
};
static_assert(listsEveryMember<BridgeRequestEnvelope>());

template <typename T> struct BridgeSuccessEnvelope {
    std::optional<std::string> requestId;
    T result;
    Date completedAt;

    static constexpr auto fields() {
        return std::tuple{optional("requestId", &BridgeSuccessEnvelope::requestId),
                          required("result", &BridgeSuccessEnvelope::result),
                          required("completedAt", &BridgeSuccessEnvelope::completedAt)};
    }
};

struct BridgeErrorBody {
    std::string code;
    std::string message;

    static constexpr auto fields() {
        return std::tuple{required("code", &BridgeErrorBody::code), required("message", &BridgeErrorBody::message)};
    }
};
static_assert(listsEveryMember<BridgeErrorBody>());

struct BridgeErrorEnvelope {
    std::optional<std::string> requestId;
    BridgeErrorBody error;
    Date completedAt;

    static constexpr auto fields() {
        return std::tuple{optional("requestId", &BridgeErrorEnvelope::requestId),
                          required("error", &BridgeErrorEnvelope::error),
                          required("completedAt", &BridgeErrorEnvelope::completedAt)};
    }
};
static_assert(listsEveryMember<BridgeErrorEnvelope>());

// Wraps what a request came to. Building an answer never fails: a result that JSON can't say becomes "encoding_error".
// `requestId` is the caller's, where one was understood; it and `clock` are borrowed for the call.
class Responder {
public:
    Responder(std::optional<std::string> requestId, const Clock& clock)
        : m_requestId(std::move(requestId)), m_clock(clock) {}

    template <typename T> BridgeResponse success(T result) const {
        try {
            return {200, encodeJSON(BridgeSuccessEnvelope<T>{m_requestId, std::move(result), m_clock.now()}), {}};
        } catch (const JSONError& failure) {
            return error(serverErrors::encodingError, failure.what());
        }
    }
    BridgeResponse error(const WireError& error, std::string_view message) const;
    // For whatever was thrown.
    BridgeResponse failure(const std::exception_ptr& thrown) const;

private:
    std::optional<std::string> m_requestId;
    const Clock& m_clock;
};

// The record of a payload. Throws AppleBridgeError (malformedRequest) when it is missing or of another shape.
template <typename T> T decodePayload(const std::optional<JSONValue>& payload) {
    if (!payload) throw AppleBridgeError::malformedRequest("Missing payload.");
    try {
        return decode<T>(*payload);
    } catch (const DecodingError& fault) {
        throw AppleBridgeError::malformedRequest(fault.what());
    }
}

} // namespace bridge
