#pragma once

#include "app/dashboard/dashboard_view.h"

#include <memory>

namespace bridge {

// Makes the dashboard. With the first one the file is loaded in which it is, and the libraries that it alone needs; it
// finds the rest of the bridge in the program. Throws PlatformError when that can't be.
std::unique_ptr<DashboardView> loadDashboard(BridgeModel& model, ConsentQuestion& consent, const QDBusConnection& bus);

} // namespace bridge
