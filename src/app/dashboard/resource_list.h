#pragma once

#include "app/bridge_model.h"
#include "app/dashboard/actions.h"
#include "app/dashboard/row_model.h"

#include <QQmlEngine>

namespace bridge {

// A calendar or a list that the user may leave to the agent.
struct ResourceRow {
    enum Role { Identifier = Qt::UserRole, Title, Account, Authorized };

    QString id;
    QString title;
    QString account;
    bool authorized = false;

    bool operator==(const ResourceRow&) const = default;
    QVariant value(int role) const;
};

// The calendars, or the reminder lists, that are there, each with the user's choice.
class ResourceList : public RowModel<ResourceRow> {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("of the dashboard")
    Q_PROPERTY(int count READ count NOTIFY changed)
    Q_PROPERTY(int authorizedCount READ authorizedCount NOTIFY changed)
    // All are being chosen, or none.
    Q_PROPERTY(bool isBusy READ isBusy NOTIFY isBusyChanged)

public:
    enum Kind { calendars, reminderLists };

    ResourceList(BridgeModel& model, Actions& actions, Kind kind, QObject* parent);

    QHash<int, QByteArray> roleNames() const override;
    int count() const { return rowCount(); }
    int authorizedCount() const;
    bool isBusy() const { return m_actions.isUnderWay(actionName({})); }

    Q_INVOKABLE void setAuthorized(const QString& identifier, bool authorized);
    Q_INVOKABLE void selectAll() { setAll(true); }
    Q_INVOKABLE void selectNone() { setAll(false); }

signals:
    void changed();
    void isBusyChanged();

private:
    void read();
    void setAll(bool authorized);
    QString actionName(const QString& identifier) const;

    BridgeModel& m_model;
    Actions& m_actions;
    Kind m_kind;
    std::vector<Subscription> m_watches;
};

} // namespace bridge
