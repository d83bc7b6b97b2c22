#include "policy/bridge_capability_policy.h"

#include "policy/apple_resource_access_policy.h"

#include <algorithm>

namespace bridge {

namespace {

// What versions before the catalogue stored. Any of them means that the bridge was in use, and what used to work must
// go on working.
constexpr std::string_view keysOfOlderVersions[] = {
    AppleResourceAccessPolicy::calendarsKey, AppleResourceAccessPolicy::reminderListsKey, "authorizedFileRoots.v1"};

template <typename Predicate> std::vector<BridgeCapability> capabilitiesWhere(Predicate predicate) {
    std::vector<BridgeCapability> found;
    std::copy_if(allCapabilities.begin(), allCapabilities.end(), std::back_inserter(found), predicate);
    return found;
}

} // namespace

BridgeCapabilityPolicy::BridgeCapabilityPolicy(UserDefaults& defaults) : m_defaults(defaults) {
    load();
    save();
}

void BridgeCapabilityPolicy::load() {
    const auto stored = m_defaults.strings(defaultsKey);
    if (!stored) {
        const bool upgraded = std::any_of(std::begin(keysOfOlderVersions), std::end(keysOfOlderVersions),
                                          [&](std::string_view key) { return m_defaults.contains(key); });
        if (upgraded) m_enabled = {allCapabilities.begin(), allCapabilities.end()};
        return;
    }
    for (const auto& name : *stored) {
        if (const auto capability = fromRawValue<BridgeCapability>(name)) m_enabled.insert(*capability);
        // Two names of an earlier, coarser catalogue.
        if (name == "calendar.read")
            m_enabled.insert({BridgeCapability::calendarEventsRead, BridgeCapability::calendarsRead});
        if (name == "reminders.read")
            m_enabled.insert({BridgeCapability::reminderItemsRead, BridgeCapability::reminderListsRead});
    }
}

void BridgeCapabilityPolicy::setEnabled(BridgeCapability capability, bool enabled) {
    apply(capability, enabled);
    save();
}

void BridgeCapabilityPolicy::setGroupEnabled(BridgeCapabilityGroup group, bool enabled) {
    for (const auto capability : capabilitiesInGroup(group))
        apply(capability, enabled);
    save();
}

std::map<std::string, bool> BridgeCapabilityPolicy::capabilityStates() const {
    // In the order of the map, so that each finds its place at once: this is part of every health check.
    static const auto sorted = [] {
        auto all = allCapabilities;
        std::sort(all.begin(), all.end(), [](auto left, auto right) { return rawValue(left) < rawValue(right); });
        return all;
    }();
    std::map<std::string, bool> states;
    for (const auto capability : sorted)
        states.emplace_hint(states.end(), rawValue(capability), isEnabled(capability));
    return states;
}

void BridgeCapabilityPolicy::apply(BridgeCapability capability, bool enabled) {
    if (enabled)
        m_enabled.insert(capability);
    else
        m_enabled.erase(capability);
}

void BridgeCapabilityPolicy::save() {
    std::vector<std::string> names;
    for (const auto capability : m_enabled)
        names.emplace_back(rawValue(capability));
    std::sort(names.begin(), names.end());
    m_defaults.setStrings(defaultsKey, std::move(names));
}

std::vector<BridgeCapability> capabilitiesInGroup(BridgeCapabilityGroup group) {
    return capabilitiesWhere([group](BridgeCapability capability) { return groupOf(capability) == group; });
}

std::vector<BridgeCapability> capabilitiesInSection(BridgeCapabilitySection section) {
    return capabilitiesWhere([section](BridgeCapability capability) { return sectionOf(capability) == section; });
}

} // namespace bridge
