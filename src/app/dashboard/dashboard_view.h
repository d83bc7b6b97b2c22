#pragma once

#include "app/bridge_model.h"
#include "app/dashboard/consent_question.h"

#include <QDBusConnection>
#include <QWindow>

namespace bridge {

// The panel in which the user sees and decides everything, as a window without a frame's decorations: what the
// shell knows of it. Main thread only.
class DashboardView : public QObject {
    Q_OBJECT

public:
    // Hidden, 640 by 780, and its own to be placed and shown. It is made by the first call and kept. Throws
    // PlatformError when that can't be.
    virtual QWindow* window() = 0;

    // A question to the user or a folder chooser is open: the window must not go away by itself.
    virtual bool hasModal() const = 0;

    // Rounded corners, for a desktop that blends windows; square ones at first.
    virtual void setRounded(bool rounded) = 0;

signals:
    void quitRequested();
    // Escape, with nothing left to close inside the window.
    void dismissed();
    void hasModalChanged(bool hasModal);
};

} // namespace bridge
