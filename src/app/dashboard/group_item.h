#pragma once

#include "app/bridge_model.h"
#include "app/dashboard/actions.h"
#include "app/dashboard/text.h"

#include <QList>
#include <QQmlEngine>

namespace bridge {

// One switch of the catalogue.
class CapabilityItem : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("of a section")
    Q_PROPERTY(QString key READ key CONSTANT)
    Q_PROPERTY(QString title READ title CONSTANT)
    Q_PROPERTY(bool enabled READ isEnabled NOTIFY enabledChanged)

public:
    CapabilityItem(BridgeModel& model, BridgeCapability capability, QObject* parent);

    QString key() const { return shown(rawValue(m_capability)); }
    QString title() const { return shown(bridge::title(m_capability)); }
    bool isEnabled() const { return m_enabled; }
    Q_INVOKABLE void setEnabled(bool enabled) { m_model.setEnabled(m_capability, enabled); }

signals:
    void enabledChanged();

private:
    BridgeModel& m_model;
    BridgeCapability m_capability;
    bool m_enabled;
    Subscription m_watch;
};

// Switches of one group under a heading of their own.
class SectionItem : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("of a group")
    Q_PROPERTY(QString title READ title CONSTANT)
    Q_PROPERTY(QList<bridge::CapabilityItem*> capabilities READ capabilities CONSTANT)

public:
    SectionItem(BridgeModel& model, BridgeCapabilitySection section, QObject* parent);

    QString title() const { return shown(bridge::title(m_section)); }
    const QList<CapabilityItem*>& capabilities() const { return m_capabilities; }

private:
    BridgeCapabilitySection m_section;
    QList<CapabilityItem*> m_capabilities;
};

// One row of the agent's permissions, and what is below it when it is open.
class GroupItem : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("of the dashboard")
    Q_PROPERTY(QString key READ key CONSTANT)
    Q_PROPERTY(QString title READ title CONSTANT)
    Q_PROPERTY(QList<bridge::SectionItem*> sections READ sections CONSTANT)
    Q_PROPERTY(int total READ total CONSTANT)
    Q_PROPERTY(int enabledCount READ enabledCount NOTIFY enabledCountChanged)
    // The name of the state of the permission that the group depends on; empty when there is none.
    Q_PROPERTY(QString permission READ permission NOTIFY permissionChanged)
    Q_PROPERTY(Access access READ access NOTIFY permissionChanged)
    Q_PROPERTY(bool accessUnderWay READ isAccessUnderWay NOTIFY accessUnderWayChanged)
    Q_PROPERTY(QString servedBy READ servedBy NOTIFY servedByChanged)

public:
    // What helps the user to get at what the group needs.
    enum Access { NoAction, GrantAccess, OpenSettings };
    Q_ENUM(Access)

    GroupItem(BridgeModel& model, Actions& actions, BridgeCapabilityGroup group, QObject* parent);

    QString key() const { return shown(rawValue(m_group)); }
    QString title() const { return shown(bridge::title(m_group)); }
    const QList<SectionItem*>& sections() const { return m_sections; }
    int total() const;
    int enabledCount() const;
    QString permission() const;
    Access access() const;
    bool isAccessUnderWay() const { return m_actions.isUnderWay(actionName()); }
    QString servedBy() const { return shown(m_model.servedBy(m_group)); }

    Q_INVOKABLE void enableAll() { m_model.setGroupEnabled(m_group, true); }
    Q_INVOKABLE void disableAll() { m_model.setGroupEnabled(m_group, false); }
    // Does what `access` says.
    Q_INVOKABLE void getAccess();

signals:
    void enabledCountChanged();
    void permissionChanged();
    void accessUnderWayChanged();
    void servedByChanged();

private:
    QString actionName() const { return "access." + key(); }

    BridgeModel& m_model;
    Actions& m_actions;
    BridgeCapabilityGroup m_group;
    std::optional<PrivacyService> m_service;
    QList<SectionItem*> m_sections;
    std::vector<Subscription> m_watches;
};

} // namespace bridge
