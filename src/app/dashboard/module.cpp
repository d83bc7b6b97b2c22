#include "app/dashboard/dashboard.h"

// What loadDashboard() looks for.
extern "C" bridge::DashboardView* makeDashboard(bridge::BridgeModel& model, bridge::ConsentQuestion& consent,
                                                const QDBusConnection& bus) {
    return new bridge::Dashboard(model, consent, bus);
}
