#pragma once

#include "app/dashboard/dashboard_view.h"

#include <QQuickWindow>

#include <memory>

namespace bridge {

// The view in Qt Quick. What the user does there is under way at most as long as the dashboard lives. Needs a
// QGuiApplication whose loop serves the loop of the model as well. Both outlive it.
class Dashboard : public DashboardView {
    Q_OBJECT

public:
    // `bus` is where the desktop's portal is.
    Dashboard(BridgeModel& model, ConsentQuestion& consent, const QDBusConnection& bus);
    ~Dashboard() override;

    QQuickWindow* window() override;
    bool hasModal() const override;
    void setRounded(bool rounded) override;

private:
    struct State;
    std::unique_ptr<State> m_state;
};

} // namespace bridge
