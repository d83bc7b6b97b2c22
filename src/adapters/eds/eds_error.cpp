#include "adapters/eds/eds_error.h"

#include <algorithm>
#include <array>
#include <libebook/libebook.h>
#include <libecal/libecal.h>

namespace bridge {

namespace {

// A reply that never came, a name that nobody owns, an object that a new process does not know.
bool isLoss(const GError& error) {
    if (error.domain == G_DBUS_ERROR) {
        constexpr std::array losses{
            G_DBUS_ERROR_SERVICE_UNKNOWN, G_DBUS_ERROR_NAME_HAS_NO_OWNER,  G_DBUS_ERROR_NO_REPLY,
            G_DBUS_ERROR_DISCONNECTED,    G_DBUS_ERROR_NO_SERVER,          G_DBUS_ERROR_UNKNOWN_OBJECT,
            G_DBUS_ERROR_UNKNOWN_METHOD,  G_DBUS_ERROR_SPAWN_CHILD_EXITED, G_DBUS_ERROR_SPAWN_EXEC_FAILED};
        return std::find(losses.begin(), losses.end(), error.code) != losses.end();
    }
    return g_error_matches(&error, G_IO_ERROR, G_IO_ERROR_CLOSED) ||
           // What GLib says of a call to a process that has gone before it was told so.
           g_error_matches(&error, G_IO_ERROR, G_IO_ERROR_FAILED) ||
           g_error_matches(&error, E_CLIENT_ERROR, E_CLIENT_ERROR_DBUS_ERROR) ||
           g_error_matches(&error, E_CLIENT_ERROR, E_CLIENT_ERROR_NOT_OPENED);
}

bool isLate(const GError& error) {
    return g_error_matches(&error, G_IO_ERROR, G_IO_ERROR_CANCELLED) ||
           g_error_matches(&error, G_IO_ERROR, G_IO_ERROR_TIMED_OUT) ||
           g_error_matches(&error, E_CLIENT_ERROR, E_CLIENT_ERROR_CANCELLED);
}

std::string wordsOf(const GError& error) {
    const GLibPointer<GError> copy(g_error_copy(&error));
    g_dbus_error_strip_remote_error(copy.get());
    return copy->message;
}

} // namespace

EdsError translate(const GError& error, const std::string& subject) {
    if (isLate(error)) return {EdsFault::other, subject + " did not answer in time."};
    if (g_error_matches(&error, G_DBUS_ERROR, G_DBUS_ERROR_SERVICE_UNKNOWN))
        return {EdsFault::lost, subject + " is not there."};
    if (isLoss(error)) return {EdsFault::lost, subject + " can't be reached: " + wordsOf(error)};
    if (error.domain == E_CAL_CLIENT_ERROR) {
        if (error.code == E_CAL_CLIENT_ERROR_OBJECT_NOT_FOUND)
            return {EdsFault::notFound, subject + " has no such item."};
        if (error.code == E_CAL_CLIENT_ERROR_OBJECT_ID_ALREADY_EXISTS)
            return {EdsFault::exists, subject + " already holds this item."};
    }
    if (error.domain == E_BOOK_CLIENT_ERROR) {
        if (error.code == E_BOOK_CLIENT_ERROR_CONTACT_NOT_FOUND)
            return {EdsFault::notFound, subject + " has no such contact."};
        if (error.code == E_BOOK_CLIENT_ERROR_CONTACT_ID_ALREADY_EXISTS)
            return {EdsFault::exists, subject + " already holds this contact."};
    }
    if (g_error_matches(&error, E_CLIENT_ERROR, E_CLIENT_ERROR_PERMISSION_DENIED))
        return {EdsFault::other, subject + " is read-only."};
    return {EdsFault::other, subject + ": " + wordsOf(error)};
}

} // namespace bridge
