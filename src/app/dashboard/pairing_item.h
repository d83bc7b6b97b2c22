#pragma once

#include "app/bridge_model.h"
#include "app/dashboard/actions.h"
#include "app/dashboard/text.h"

#include <QQmlEngine>

namespace bridge {

// The bond with the Agent Server.
class PairingItem : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("of the dashboard")
    Q_PROPERTY(QString address READ address NOTIFY changed)
    Q_PROPERTY(bool isPaired READ isPaired NOTIFY changed)
    Q_PROPERTY(bool inProgress READ isInProgress NOTIFY changed)
    Q_PROPERTY(QString message READ message NOTIFY changed)
    // The last thing that was tried did not come about.
    Q_PROPERTY(bool hasFailed READ hasFailed NOTIFY changed)

public:
    PairingItem(BridgeModel& model, Actions& actions, QObject* parent);

    QString address() const { return shown(m_model.agentServerURL.get()); }
    bool isPaired() const { return m_model.isPaired.get(); }
    bool isInProgress() const;
    QString message() const { return shown(m_model.pairingStatusMessage.get().value_or("")); }
    bool hasFailed() const { return m_hasFailed; }

    Q_INVOKABLE void pair(const QString& code);
    Q_INVOKABLE void unpair();

signals:
    void changed();
    void pairingFailed();
    void pairingSucceeded();

private:
    BridgeModel& m_model;
    Actions& m_actions;
    bool m_hasFailed = false;
    std::vector<Subscription> m_watches;
};

} // namespace bridge
