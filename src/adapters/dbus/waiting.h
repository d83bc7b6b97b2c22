#pragma once

#include "adapters/dbus/glib_pointer.h"

namespace bridge {

// Held by a task that waits for a call: ends the call when it goes.
class Waiting {
public:
    Waiting() = default;
    Waiting(const Waiting&) = delete;
    Waiting& operator=(const Waiting&) = delete;
    ~Waiting() { g_cancellable_cancel(m_cancellable.get()); }

    const std::shared_ptr<GCancellable>& cancellable() const { return m_cancellable; }

private:
    std::shared_ptr<GCancellable> m_cancellable{g_cancellable_new(), GObjectRelease()};
};

} // namespace bridge
