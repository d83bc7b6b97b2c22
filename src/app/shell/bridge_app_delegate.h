#pragma once

#include "app/bridge_model.h"
#include "app/dashboard/dashboard.h"
#include "app/shell/popover.h"
#include "app/shell/status_item.h"

#include <memory>

namespace bridge {

// The application as the user meets it: an icon in the panel, and the dashboard in a popover that belongs to it.
class BridgeAppDelegate : public QObject {
    Q_OBJECT

public:
    enum class Show { onlyWhenAsked, onceWithoutIcon };

    // Model and question outlive it; `bus` is the session's, connected or not.
    BridgeAppDelegate(BridgeModel& bridgeModel, ConsentQuestion& consent, const QDBusConnection& bus);
    ~BridgeAppDelegate() override;

    // Puts the icon into the panel. Where there is no panel for it, the user who has just started the program is shown
    // the dashboard instead.
    void launch(Show show);

    // What a click on the icon means.
    void toggleDashboard(const std::optional<QRect>& place);
    // For a second start, and for a question that waits. The token is what the desktop gave along, or empty.
    void showDashboard(const QString& activationToken);

    BridgeModel& model;
    std::unique_ptr<StatusItem> statusItem;
    // Made when it is first shown, and kept.
    std::unique_ptr<Popover> dashboardPopover;

signals:
    void quitRequested();

private:
    // Nothing, and a line in the log, when the dashboard can't be made.
    Popover* popover();
    void prepareToShow();
    void showWithoutIcon();

    QDBusConnection m_bus;
    std::unique_ptr<Dashboard> m_dashboard;
    std::optional<QRect> m_lastPlace;
    bool m_showsWithoutIcon = false;
};

} // namespace bridge
