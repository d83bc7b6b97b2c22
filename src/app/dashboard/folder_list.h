#pragma once

#include "app/bridge_model.h"
#include "app/dashboard/actions.h"
#include "app/dashboard/row_model.h"

#include <QQmlEngine>

namespace bridge {

struct FolderRow {
    enum Role { Identifier = Qt::UserRole, Name, Path, ReadOnly };

    QString id;
    QString name;
    QString path;
    bool readOnly = false;

    bool operator==(const FolderRow&) const = default;
    QVariant value(int role) const;
};

// The folders that the user has allowed.
class FolderList : public RowModel<FolderRow> {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("of the dashboard")
    Q_PROPERTY(int count READ count NOTIFY countChanged)
    Q_PROPERTY(bool isChoosing READ isChoosing NOTIFY isChoosingChanged)

public:
    FolderList(BridgeModel& model, Actions& actions, QObject* parent);

    QHash<int, QByteArray> roleNames() const override;
    int count() const { return rowCount(); }
    // The folder chooser is open.
    bool isChoosing() const;

    Q_INVOKABLE void add();
    Q_INVOKABLE void remove(const QString& identifier);

signals:
    void countChanged();
    void isChoosingChanged();

private:
    void read();

    BridgeModel& m_model;
    Actions& m_actions;
    std::vector<Subscription> m_watches;
};

} // namespace bridge
