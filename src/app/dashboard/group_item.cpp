#include "app/dashboard/group_item.h"

namespace bridge {

CapabilityItem::CapabilityItem(BridgeModel& model, BridgeCapability capability, QObject* parent)
    : QObject(parent),
      m_model(model),
      m_capability(capability),
      m_enabled(model.enabledCapabilities.get().contains(capability)) {
    m_watch = model.enabledCapabilities.observe([this](const std::set<BridgeCapability>& all) {
        if (m_enabled == all.contains(m_capability)) return;
        m_enabled = !m_enabled;
        emit enabledChanged();
    });
}

SectionItem::SectionItem(BridgeModel& model, BridgeCapabilitySection section, QObject* parent)
    : QObject(parent), m_section(section) {
    for (const auto capability : capabilitiesInSection(section))
        m_capabilities << new CapabilityItem(model, capability, this);
}

GroupItem::GroupItem(BridgeModel& model, Actions& actions, BridgeCapabilityGroup group, QObject* parent)
    : QObject(parent), m_model(model), m_actions(actions), m_group(group), m_service(BridgeModel::permissionOf(group)) {
    for (const auto section : allCapabilitySections)
        if (groupOf(section) == group) m_sections << new SectionItem(model, section, this);
    m_watches.push_back(model.enabledCapabilities.observe([this](const auto&) { emit enabledCountChanged(); }));
    m_watches.push_back(model.services.observe([this](const auto&) { emit servedByChanged(); }));
    if (m_service)
        m_watches.push_back(model.permission(*m_service).observe([this](const auto&) { emit permissionChanged(); }));
    connect(&actions, &Actions::changed, this, &GroupItem::accessUnderWayChanged);
}

int GroupItem::total() const {
    return static_cast<int>(capabilitiesInGroup(m_group).size());
}

int GroupItem::enabledCount() const {
    const auto& enabled = m_model.enabledCapabilities.get();
    return static_cast<int>(
        std::ranges::count_if(enabled, [this](BridgeCapability capability) { return groupOf(capability) == m_group; }));
}

QString GroupItem::permission() const {
    return m_service ? shown(wireName(m_model.permission(*m_service).get())) : QString();
}

GroupItem::Access GroupItem::access() const {
    if (!m_service) return NoAction;
    switch (m_model.accessAction(*m_service)) {
    case AccessAction::grantAccess:
        return GrantAccess;
    case AccessAction::openSettings:
        return OpenSettings;
    case AccessAction::none:
        break;
    }
    return NoAction;
}

void GroupItem::getAccess() {
    const auto wanted = access();
    if (wanted == GrantAccess) m_actions.start(actionName(), [this] { return m_model.requestAccess(*m_service); });
    if (wanted == OpenSettings)
        m_actions.start(actionName(), [this] {
            m_model.openPrivacySettings();
            return done();
        });
}

} // namespace bridge
