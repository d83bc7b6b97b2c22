#include "app/shell/dashboard_module.h"

#include "app/helper_program.h"
#include "base/platform_error.h"
#include "base/shared_library.h"

namespace bridge {

std::unique_ptr<DashboardView> loadDashboard(BridgeModel& model, ConsentQuestion& consent, const QDBusConnection& bus) {
    // Another version's file would find another program than it was made for.
    if (isOwnProgramReplaced())
        throw PlatformError("Brindlefox Apple Bridge was updated or removed while it was running. Quit it, then start "
                            "it again.");
    try {
        DashboardView* (*makeDashboard)(BridgeModel&, ConsentQuestion&, const QDBusConnection&) =
            SharedLibrary(libraryFile("modules/dashboard.so"))["makeDashboard"];
        return std::unique_ptr<DashboardView>(makeDashboard(model, consent, bus));
    } catch (const PlatformError& error) {
        throw PlatformError(std::string("The dashboard can't be shown; install the packages again. ") + error.what());
    }
}

} // namespace bridge
