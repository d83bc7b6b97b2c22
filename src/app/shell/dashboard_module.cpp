#include "app/shell/dashboard_module.h"

#include "app/helper_program.h"
#include "base/platform_error.h"
#include "base/shared_library.h"

namespace bridge {

std::unique_ptr<DashboardView> loadDashboard(BridgeModel& model, ConsentQuestion& consent, const QDBusConnection& bus) {
    try {
        DashboardView* (*makeDashboard)(BridgeModel&, ConsentQuestion&, const QDBusConnection&) =
            SharedLibrary(libraryFile("modules/dashboard.so"))["makeDashboard"];
        return std::unique_ptr<DashboardView>(makeDashboard(model, consent, bus));
    } catch (const PlatformError& error) {
        throw PlatformError(std::string("The dashboard can't be shown; install the packages again. ") + error.what());
    }
}

} // namespace bridge
