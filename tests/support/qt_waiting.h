#pragma once

#include "tests/support/becomes_true.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QTimer>

namespace bridge {

// Lets happen what is due, or waits for the next thing, but only a moment: what is looked at may be another thread's.
// The flag alone would wait for ever, and the overload with a time does not wait at all.
inline void processNextEvents() {
    QTimer moment;
    moment.start(20);
    QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
}

// Lets everything happen that happens, until the condition holds. False when there is no hope any more.
template <typename Condition> bool comesTrue(Condition condition) {
    for (const QDeadlineTimer givingUp(hopeless); !condition(); processNextEvents())
        if (givingUp.hasExpired()) return condition();
    return true;
}

} // namespace bridge
