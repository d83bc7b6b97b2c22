#pragma once

#include "adapters/dbus/glib_pointer.h"

namespace bridge {

// The session bus when it is there, and only then: none is started. Losing it does not end the program. Empty when
// there is none. Any thread.
GObjectPointer<GDBusConnection> sessionBus(GCancellable* cancellable);

// A connection of the caller's own to the system bus, whose end ends it. Empty, and why, when it can't be reached. Any
// thread.
GObjectPointer<GDBusConnection> openSystemBus(GCancellable* cancellable, GError** error);

// Whether somebody owns the name or the bus would start its owner when called.
bool isNameServed(GDBusConnection* bus, const char* name, GCancellable* cancellable);

} // namespace bridge
