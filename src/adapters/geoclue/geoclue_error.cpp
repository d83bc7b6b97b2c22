#include "adapters/geoclue/geoclue_error.h"

#include "adapters/dbus/glib_pointer.h"
#include "adapters/geoclue/geoclue_names.h"

namespace bridge {

namespace {

// Without the name of the error on the bus that GLib puts before it.
std::string messageOf(const GError& error) {
    GLibPointer<GError> copy(g_error_copy(&error));
    g_dbus_error_strip_remote_error(copy.get());
    return copy->message;
}

} // namespace

PlatformError geoclueError(const GError& error) {
    const auto is = [&](GDBusError code) { return g_error_matches(&error, G_DBUS_ERROR, code) != FALSE; };
    if (is(G_DBUS_ERROR_ACCESS_DENIED))
        return PlatformError(std::string("GeoClue does not let Brindlefox Apple Bridge know the location. Allow it in "
                                         "the desktop's privacy settings under location services; where those don't "
                                         "name it, in /etc/geoclue/geoclue.conf under [") +
                             geoclue::desktopID + "]. GeoClue says: " + messageOf(error));
    if (is(G_DBUS_ERROR_SERVICE_UNKNOWN) || is(G_DBUS_ERROR_NAME_HAS_NO_OWNER))
        return PlatformError("GeoClue, which finds the location, is not there any more. Install geoclue-2.0, or start "
                             "Brindlefox Apple Bridge again to do without it.");
    if (is(G_DBUS_ERROR_NO_REPLY) || g_error_matches(&error, G_IO_ERROR, G_IO_ERROR_CLOSED)) return geoclueIsGone();
    return PlatformError("GeoClue, which finds the location, failed: " + messageOf(error));
}

PlatformError geoclueIsGone() {
    return PlatformError("GeoClue ended before it found the location. Try again.");
}

} // namespace bridge
