#pragma once

#include "platform/user_defaults.h"
#include "policy/bridge_capability.h"

#include <map>
#include <set>
#include <string>
#include <vector>

namespace bridge {

// Which capabilities the user has enabled: nothing on a fresh installation, everything when an older version without
// the catalogue was in use here. Only the user changes the set; each change is stored at once. Main thread only.
class BridgeCapabilityPolicy {
public:
    static constexpr std::string_view defaultsKey = "appleBridge.enabledCapabilities.v1";

    // Loads the set, brings older forms up to date and stores it again, so that what is stored is always current.
    // `defaults` must outlive the policy.
    explicit BridgeCapabilityPolicy(UserDefaults& defaults);

    const std::set<BridgeCapability>& enabledCapabilities() const { return m_enabled; }
    bool isEnabled(BridgeCapability capability) const { return m_enabled.contains(capability); }

    void setEnabled(BridgeCapability capability, bool enabled);
    // Every capability of the group in one change.
    void setGroupEnabled(BridgeCapabilityGroup group, bool enabled);

    // Raw value to enabled, for all 47.
    std::map<std::string, bool> capabilityStates() const;

private:
    void load();
    void apply(BridgeCapability capability, bool enabled);
    void save();

    UserDefaults& m_defaults;
    std::set<BridgeCapability> m_enabled;
};

// In catalogue order.
std::vector<BridgeCapability> capabilitiesInGroup(BridgeCapabilityGroup group);
std::vector<BridgeCapability> capabilitiesInSection(BridgeCapabilitySection section);

} // namespace bridge
