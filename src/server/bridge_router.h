#pragma once

#include "server/http_request.h"
#include "server/operation.h"

namespace bridge {

class BridgeCapabilityPolicy;
class BridgePairingStore;

// Turns one request into one answer: pairing, credential, endpoint, envelope, and then the operation's own road, which
// is the same for all. It keeps nothing between requests; what the user changes holds from the next one on.
class BridgeRouter {
public:
    BridgeRouter(BridgeSet bridges, const BridgeCapabilityPolicy& policy, const BridgePairingStore& pairing,
                 const Clock& clock)
        : m_bridges(bridges), m_policy(policy), m_pairing(pairing), m_clock(clock) {}

    // Every failure is an answer too. The router outlives the task.
    Task<BridgeResponse> response(ParsedHTTPRequest request);

private:
    Task<BridgeResponse> endpoint(ParsedHTTPRequest request);
    Task<BridgeResponse> execute(std::string body);
    Task<BridgeResponse> run(const Operation& row, BridgeRequestEnvelope envelope);
    void requireCapability(std::optional<BridgeCapability> capability) const;

    BridgeSet m_bridges;
    const BridgeCapabilityPolicy& m_policy;
    const BridgePairingStore& m_pairing;
    const Clock& m_clock;
};

} // namespace bridge
