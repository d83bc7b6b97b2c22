#pragma once

#include "app/bridge_model.h"
#include "app/dashboard/consent_question.h"

#include <QDBusConnection>
#include <QObject>

#include <memory>

class QQuickWindow;

namespace bridge {

// The panel in which the user sees and decides everything, as a window without a frame's decorations. What the user
// does there is under way at most as long as the dashboard lives. Main thread only; needs a QGuiApplication whose loop
// serves the loop of the model as well. Both outlive it.
class Dashboard : public QObject {
    Q_OBJECT

public:
    // `bus` is where the desktop's portal is.
    Dashboard(BridgeModel& model, ConsentQuestion& consent, const QDBusConnection& bus);
    ~Dashboard() override;

    // Hidden, 640 by 780, and its own to be placed and shown. Engine and window are made by the first call and kept.
    QQuickWindow* window();

    // A question to the user or a folder chooser is open: the window must not go away by itself.
    bool hasModal() const;

    // Rounded corners, for a desktop that blends windows; square ones at first.
    void setRounded(bool rounded);

signals:
    void quitRequested();
    // Escape, with nothing left to close inside the window.
    void dismissed();
    void hasModalChanged(bool hasModal);
    // A question waits for the user, who may not have the window before him.
    void attentionRequested();

private:
    struct State;
    std::unique_ptr<State> m_state;
};

} // namespace bridge
