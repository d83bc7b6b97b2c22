#pragma once

#include "app/bridge_model.h"
#include "app/dashboard/dashboard_view.h"
#include "app/shell/failure_box.h"
#include "app/shell/popover.h"
#include "app/shell/status_item.h"

#include <functional>
#include <memory>

namespace bridge {

// The application as the user meets it: an icon in the panel, and the dashboard in a popover that belongs to it.
class BridgeAppDelegate : public QObject {
    Q_OBJECT

public:
    using MakeDashboard = std::function<std::unique_ptr<DashboardView>()>;

    // Model and question outlive it; `bus` is the session's, connected or not. `make` is called when the dashboard is
    // first wanted, and may throw PlatformError.
    BridgeAppDelegate(BridgeModel& bridgeModel, ConsentQuestion& consent, const QDBusConnection& bus,
                      MakeDashboard make);
    ~BridgeAppDelegate() override;

    // Puts the icon into the panel.
    void launch();

    // What a click on the icon means.
    void toggleDashboard(const std::optional<QRect>& place);
    // For a start by the user, be it the first or not, and for a question that waits. The token is what the desktop
    // gave along, or empty.
    void showDashboard(const QString& activationToken);

    BridgeModel& model;
    std::unique_ptr<StatusItem> statusItem;
    // Made when it is first shown, and kept.
    std::unique_ptr<Popover> dashboardPopover;

signals:
    void quitRequested();

private:
    // Nothing when the dashboard can't be made; user and log are told why.
    Popover* popover();
    void makeDashboard();
    void showFailure(const std::string& reason);
    void prepareToShow();

    ConsentQuestion& m_consent;
    QDBusConnection m_bus;
    MakeDashboard m_makeDashboard;
    std::unique_ptr<DashboardView> m_dashboard;
    std::unique_ptr<QMessageBox> m_failure; // the last that was shown
    std::optional<QRect> m_lastPlace;
};

} // namespace bridge
