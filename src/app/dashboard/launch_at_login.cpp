#include "app/dashboard/launch_at_login.h"

namespace bridge {

LaunchAtLogin::LaunchAtLogin(BridgeModel& model, Actions& actions, QObject* parent)
    : QObject(parent), m_model(model), m_actions(actions) {
    for (auto* flag :
         {&model.launchAtLoginEnabled, &model.launchAtLoginRequiresApproval, &model.launchAtLoginUnavailable})
        m_watches.push_back(flag->observe([this](bool) { emit changed(); }));
}

bool LaunchAtLogin::isEnabled() const {
    return m_model.launchAtLoginEnabled.get();
}

LaunchAtLogin::Status LaunchAtLogin::status() const {
    if (m_model.launchAtLoginUnavailable.get()) return Unavailable;
    if (m_model.launchAtLoginRequiresApproval.get()) return RequiresApproval;
    return isEnabled() ? Starts : Off;
}

void LaunchAtLogin::setEnabled(bool enabled) {
    m_actions.start("login", [this, enabled] {
        m_model.setLaunchAtLogin(enabled);
        return done();
    });
}

} // namespace bridge
