#include "server/bridge_router.h"

#include "policy/bridge_capability_policy.h"
#include "policy/bridge_pairing_store.h"
#include "server/permission_snapshot.h"

namespace bridge {

namespace {

BridgeResponse named(std::string_view logName, BridgeResponse response) {
    response.logName = logName;
    return response;
}

void requireConfirmation(const Operation& row, bool needed, const BridgeRequestEnvelope& envelope) {
    if (needed && !envelope.confirmed.value_or(false)) throw AppleBridgeError::confirmationRequired(row.name);
}

} // namespace

Task<BridgeResponse> BridgeRouter::response(ParsedHTTPRequest request) {
    std::exception_ptr fault;
    try {
        auto answer = co_await endpoint(std::move(request));
        co_return answer;
    } catch (...) {
        fault = std::current_exception();
    }
    co_return named("failed", Responder(std::nullopt, m_clock).failure(fault));
}

Task<BridgeResponse> BridgeRouter::endpoint(ParsedHTTPRequest request) {
    const Responder responder(std::nullopt, m_clock);
    if (!m_pairing.isPaired())
        co_return named("unpaired", responder.error(serverErrors::pairingRequired,
                                                    "Pair Brindlefox Apple Bridge with Agent Server first."));
    if (!m_pairing.authorizes(request.header("authorization")))
        co_return named("unauthorized", responder.error(serverErrors::unauthorized,
                                                        "The Agent Server credential is missing or invalid."));

    if (request.method == "GET" && request.path == "/health") {
        auto health = co_await std::get<const BridgeStatus&>(m_bridges).health();
        co_return named("health", responder.success(std::move(health)));
    }
    if (request.method == "POST" && request.path == "/v1/execute") {
        auto answer = co_await execute(std::move(request.body));
        co_return answer;
    }
    co_return named("not-found", responder.error(serverErrors::notFound, "Unknown bridge endpoint."));
}

Task<BridgeResponse> BridgeRouter::execute(std::string body) {
    BridgeRequestEnvelope envelope;
    std::exception_ptr fault;
    try {
        envelope = decode<BridgeRequestEnvelope>(parseJSON(body));
    } catch (const std::runtime_error& error) {
        co_return named("invalid-json",
                        Responder(std::nullopt, m_clock).error(serverErrors::invalidJSON, error.what()));
    }

    const Responder responder(envelope.requestId, m_clock);
    const Operation* row = findOperation(envelope.operation);
    if (!row) {
        fault = std::make_exception_ptr(AppleBridgeError::operationNotSupported(envelope.operation));
        co_return named("unknown-operation", responder.failure(fault));
    }
    // A handler can't wait, so the error is carried out of it.
    try {
        auto answer = co_await run(*row, std::move(envelope));
        co_return named(row->name, std::move(answer));
    } catch (...) {
        fault = std::current_exception();
    }
    co_return named(row->name, responder.failure(fault));
}

// The one order of checks, for every operation.
Task<BridgeResponse> BridgeRouter::run(const Operation& row, BridgeRequestEnvelope envelope) {
    requireCapability(row.capability);
    requireConfirmation(row, row.confirm == Confirm::always, envelope);
    const auto prepared = row.prepare(row, envelope.payload);
    requireCapability(prepared->dependentCapability(m_bridges));
    requireConfirmation(row, row.confirm == Confirm::whenOverwriting && prepared->overwrites(), envelope);
    auto answer = co_await prepared->run(m_bridges, Responder(std::move(envelope.requestId), m_clock));
    co_return answer;
}

void BridgeRouter::requireCapability(std::optional<BridgeCapability> capability) const {
    if (capability && !m_policy.isEnabled(*capability)) throw AppleBridgeError::capabilityDenied(rawValue(*capability));
}

} // namespace bridge
