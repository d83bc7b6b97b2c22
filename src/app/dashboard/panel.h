#pragma once

#include "app/dashboard/consent_item.h"
#include "app/dashboard/folder_list.h"
#include "app/dashboard/group_item.h"
#include "app/dashboard/launch_at_login.h"
#include "app/dashboard/pairing_item.h"
#include "app/dashboard/resource_list.h"

namespace bridge {

// All that the dashboard shows, bound to the model, and all that can be done in it.
class Panel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("of the dashboard")
    Q_PROPERTY(QList<bridge::GroupItem*> groups READ groups CONSTANT)
    Q_PROPERTY(bridge::ResourceList* calendars READ calendars CONSTANT)
    Q_PROPERTY(bridge::ResourceList* reminderLists READ reminderLists CONSTANT)
    Q_PROPERTY(bridge::FolderList* folders READ folders CONSTANT)
    Q_PROPERTY(bridge::LaunchAtLogin* login READ login CONSTANT)
    Q_PROPERTY(bridge::PairingItem* pairing READ pairing CONSTANT)
    Q_PROPERTY(bridge::ConsentItem* consent READ consent CONSTANT)
    Q_PROPERTY(QString lastError READ lastError NOTIFY lastErrorChanged)
    // Why the server does not listen; empty while it does.
    Q_PROPERTY(QString serverFailure READ serverFailure NOTIFY serverFailureChanged)
    Q_PROPERTY(bool isRefreshing READ isRefreshing NOTIFY isRefreshingChanged)

public:
    Panel(BridgeModel& model, ConsentQuestion& questions);
    ~Panel() override;

    const QList<GroupItem*>& groups() const { return m_groups; }
    ResourceList* calendars() { return &m_calendars; }
    ResourceList* reminderLists() { return &m_reminderLists; }
    FolderList* folders() { return &m_folders; }
    LaunchAtLogin* login() { return &m_login; }
    PairingItem* pairing() { return &m_pairing; }
    ConsentItem* consent() { return &m_consent; }
    QString lastError() const { return shown(m_model.lastError.get().value_or("")); }
    QString serverFailure() const;
    bool isRefreshing() const;

    Q_INVOKABLE void refresh();
    // What the user did and what failed, as it is shown, or else to read what could not be read.
    Q_INVOKABLE void tryAgain();
    Q_INVOKABLE void openPrivacySettings();
    Q_INVOKABLE void startServer() { m_model.httpServer.start(); }

    // The dashboard comes up: reads what may have changed meanwhile.
    void refreshOnOpening();

signals:
    void lastErrorChanged();
    void serverFailureChanged();
    void isRefreshingChanged();

private:
    BridgeModel& m_model;
    QList<GroupItem*> m_groups;
    Actions m_actions; // before what starts them
    ResourceList m_calendars;
    ResourceList m_reminderLists;
    FolderList m_folders;
    LaunchAtLogin m_login;
    PairingItem m_pairing;
    ConsentItem m_consent;
    std::vector<Subscription> m_watches;
};

} // namespace bridge
