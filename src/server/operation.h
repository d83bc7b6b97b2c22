#pragma once

#include "base/schema.h"
#include "base/task.h"
#include "policy/bridge_capability.h"
#include "server/envelopes.h"

#include <memory>
#include <span>
#include <tuple>

namespace bridge {

class AppleDataBridge;
class BridgeStatus;
class ContactDataBridge;
class FileDataBridge;
class IWorkAutomationBridge;
class LocationDataBridge;
class MusicDataBridge;

// The objects that operations call, found by their type. They outlive every request.
using BridgeSet = std::tuple<const BridgeStatus&, AppleDataBridge&, ContactDataBridge&, FileDataBridge&,
                             IWorkAutomationBridge&, LocationDataBridge&, MusicDataBridge&>;

// When a client must say `"confirmed": true`.
enum class Confirm { never, always, whenOverwriting };

// An operation whose payload was understood. Made, asked and run once, for one request.
class PreparedOperation {
public:
    virtual ~PreparedOperation() = default;

    // Which switch it needs, where that depends on the request. May throw what the operation itself would.
    virtual std::optional<BridgeCapability> dependentCapability(const BridgeSet& bridges) const = 0;
    virtual bool overwrites() const = 0;
    virtual Task<BridgeResponse> run(const BridgeSet& bridges, Responder responder) = 0;
};

// All there is to know about one operation of the wire. The rows stand in one file for each bridge.
struct Operation {
    std::string_view name;
    std::optional<BridgeCapability> capability;              // none, or known only from the request
    std::span<const BridgeCapability> dependentCapabilities; // then these are the ones it may be
    Confirm confirm;
    std::unique_ptr<PreparedOperation> (*prepare)(const Operation& row, const std::optional<JSONValue>& payload);
    JSONValue (*payloadSchema)(SchemaBook&); // null where the payload is ignored
    JSONValue (*resultSchema)(SchemaBook&);
};

// Every operation. They are alive as long as the program.
std::span<const std::span<const Operation>> operationGroups();
const Operation* findOperation(std::string_view name);

} // namespace bridge
