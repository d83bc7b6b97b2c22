#pragma once

#include <QDBusConnection>

namespace bridge {

// The session bus as Qt speaks to it, when it is there: none is started. Not connected otherwise.
QDBusConnection qtSessionBus();

} // namespace bridge
