#pragma once

#include "adapters/dbus/waiting.h"
#include "adapters/eds/deadline.h"

#include <optional>

namespace bridge {

// The limits of one job on a worker: its time, and whether somebody still waits for it.
class Call {
public:
    // `waiting` is cancelled when the waiting task is dropped.
    Call(DeadlineKeeper& keeper, std::chrono::milliseconds time, std::shared_ptr<GCancellable> waiting)
        : m_keeper(keeper), m_time(time), m_cancellable(std::move(waiting)) {
        m_deadline.emplace(m_keeper, m_time, m_cancellable);
    }

    GCancellable* cancellable() const { return m_cancellable.get(); }

    // Before the first of several changes: from here on only time ends it, which begins anew, so that a change is
    // finished or taken back although nobody waits.
    void goThrough() {
        m_cancellable.reset(g_cancellable_new(), GObjectRelease());
        m_deadline.emplace(m_keeper, m_time, m_cancellable);
    }

private:
    DeadlineKeeper& m_keeper;
    std::chrono::milliseconds m_time;
    std::shared_ptr<GCancellable> m_cancellable;
    std::optional<Deadline> m_deadline;
};

} // namespace bridge
