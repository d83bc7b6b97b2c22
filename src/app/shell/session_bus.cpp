#include "app/shell/session_bus.h"

#include <QFileInfo>

namespace bridge {

QDBusConnection qtSessionBus() {
    // Without either of the two, asking for the bus would launch one on the display.
    const bool isThere = !qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS") ||
                         QFileInfo::exists(qEnvironmentVariable("XDG_RUNTIME_DIR") + "/bus");
    return isThere ? QDBusConnection::sessionBus() : QDBusConnection("none");
}

} // namespace bridge
