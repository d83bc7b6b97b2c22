#include "app/shell/bridge_app_delegate.h"

#include "app/shell/x11.h"
#include "base/log.h"

#include <QPushButton>

namespace bridge {

BridgeAppDelegate::BridgeAppDelegate(BridgeModel& bridgeModel, ConsentQuestion& consent, const QDBusConnection& bus,
                                     MakeDashboard make)
    : model(bridgeModel), m_consent(consent), m_bus(bus), m_makeDashboard(std::move(make)) {
    consent.bringDashboard = [this] { showDashboard({}); };
}

BridgeAppDelegate::~BridgeAppDelegate() {
    m_consent.bringDashboard = nullptr;
    // Before the window that it holds.
    dashboardPopover.reset();
}

void BridgeAppDelegate::launch() {
    statusItem = std::make_unique<StatusItem>(m_bus);
    connect(statusItem.get(), &StatusItem::clicked, this, &BridgeAppDelegate::toggleDashboard);
    connect(statusItem.get(), &StatusItem::activationTokenGiven, this,
            [](const QString& token) { qputenv("XDG_ACTIVATION_TOKEN", token.toUtf8()); });
}

void BridgeAppDelegate::toggleDashboard(const std::optional<QRect>& place) {
    m_lastPlace = place;
    if (auto* const shown = popover()) shown->toggle(place);
}

void BridgeAppDelegate::showDashboard(const QString& activationToken) {
    if (!activationToken.isEmpty()) qputenv("XDG_ACTIVATION_TOKEN", activationToken.toUtf8());
    if (auto* const shown = popover()) shown->show(m_lastPlace);
}

Popover* BridgeAppDelegate::popover() {
    if (dashboardPopover) return dashboardPopover.get();
    try {
        makeDashboard();
    } catch (const PlatformError& error) {
        log::note(error.what());
        showFailure(error.what());
        // Later: it may be a question that has it made.
        QMetaObject::invokeMethod(
            this, [this, reason = std::string(error.what())] { m_consent.cannotBeShown(reason); },
            Qt::QueuedConnection);
        return nullptr;
    }
    return dashboardPopover.get();
}

void BridgeAppDelegate::makeDashboard() {
    if (!m_dashboard) m_dashboard = m_makeDashboard();
    auto* const dashboard = m_dashboard.get();
    dashboardPopover = std::make_unique<Popover>(*dashboard->window(), [dashboard] { return dashboard->hasModal(); });
    connect(dashboard, &DashboardView::quitRequested, this, &BridgeAppDelegate::quitRequested);
    connect(dashboard, &DashboardView::dismissed, dashboardPopover.get(), &Popover::hide);
    // The chooser may have been another program's, and have left the keyboard elsewhere.
    connect(dashboard, &DashboardView::hasModalChanged, dashboardPopover.get(), [this](bool hasModal) {
        if (!hasModal && dashboardPopover->isShown()) showDashboard({});
    });
    connect(dashboardPopover.get(), &Popover::aboutToShow, this, &BridgeAppDelegate::prepareToShow);
}

void BridgeAppDelegate::showFailure(const std::string& reason) {
    // One is enough, however often the user tries.
    if (m_failure && m_failure->isVisible()) return m_failure->raise();
    m_failure = failureBox(reason);
    // The dashboard is where one quits otherwise.
    connect(m_failure->addButton("Quit", QMessageBox::DestructiveRole), &QPushButton::clicked, this,
            &BridgeAppDelegate::quitRequested);
    m_failure->show();
}

void BridgeAppDelegate::prepareToShow() {
    // A compositor may come and go.
    m_dashboard->setRounded(blendsWindows());
}

} // namespace bridge
