#pragma once

#include "app/bridge_model.h"
#include "app/dashboard/actions.h"

#include <QQmlEngine>

namespace bridge {

// Whether the bridge starts when the user signs in.
class LaunchAtLogin : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("of the dashboard")
    Q_PROPERTY(bool enabled READ isEnabled NOTIFY changed)
    Q_PROPERTY(Status status READ status NOTIFY changed)

public:
    enum Status { Off, Starts, RequiresApproval, Unavailable };
    Q_ENUM(Status)

    LaunchAtLogin(BridgeModel& model, Actions& actions, QObject* parent);

    bool isEnabled() const;
    Status status() const;
    Q_INVOKABLE void setEnabled(bool enabled);

signals:
    void changed();

private:
    BridgeModel& m_model;
    Actions& m_actions;
    std::vector<Subscription> m_watches;
};

} // namespace bridge
