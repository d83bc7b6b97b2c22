#include "app/dashboard/dashboard.h"

#include "app/dashboard/appearance.h"
#include "app/dashboard/panel.h"
#include "app/dashboard/symbols.h"
#include "base/log.h"

#include <QQmlApplicationEngine>

void qml_register_types_Brindlefox();

namespace bridge {

struct Dashboard::State {
    Panel panel;
    Appearance appearance;
    bool hadModal = false;
    bool rounded = false;
    QQuickWindow* window = nullptr;
    QQmlApplicationEngine engine; // goes first: it shows all of the above

    State(BridgeModel& model, ConsentQuestion& consent, const QDBusConnection& bus)
        : panel(model, consent), appearance(bus) {}
};

namespace {

// Drawn by the processor: such a small panel is there faster, in a third of the memory. Once: it is the process's.
void chooseRenderer() {
    static bool chosen = false;
    if (std::exchange(chosen, true)) return;
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    QQuickWindow::setTextRenderType(QQuickWindow::NativeTextRendering);
    QQuickWindow::setDefaultAlphaBuffer(true);
}

} // namespace

Dashboard::Dashboard(BridgeModel& model, ConsentQuestion& consent, const QDBusConnection& bus)
    : m_state(std::make_unique<State>(model, consent, bus)) {
    const auto tell = [this] {
        if (m_state->hadModal == hasModal()) return;
        m_state->hadModal = hasModal();
        emit hasModalChanged(m_state->hadModal);
    };
    auto& panel = m_state->panel;
    connect(panel.consent(), &ConsentItem::serviceChanged, this, tell);
    connect(panel.folders(), &FolderList::isChoosingChanged, this, tell);
}

Dashboard::~Dashboard() = default;

QQuickWindow* Dashboard::window() {
    if (m_state->window) return m_state->window;
    chooseRenderer();
    // A static library's types are known once somebody names this.
    qml_register_types_Brindlefox();
    auto& engine = m_state->engine;
    engine.addImportPath("qrc:/qt/qml");
    engine.addImageProvider("symbol", new Symbols);
    engine.setInitialProperties({{"panel", QVariant::fromValue(&m_state->panel)},
                                 {"appearance", QVariant::fromValue(&m_state->appearance)},
                                 {"rounded", m_state->rounded},
                                 {"visible", false}});
    engine.load(QUrl("qrc:/qt/qml/Brindlefox/Dashboard.qml"));
    const auto roots = engine.rootObjects();
    auto* window = roots.isEmpty() ? nullptr : qobject_cast<QQuickWindow*>(roots.first());
    if (!window)
        throw PlatformError("The dashboard can't be shown: parts of Qt are missing. Install the packages again.");
    connect(window, SIGNAL(quitRequested()), this, SIGNAL(quitRequested()));
    connect(window, SIGNAL(dismissed()), this, SIGNAL(dismissed()));
    connect(window, &QWindow::visibleChanged, this, [this, window](bool isVisible) {
        window->setProperty("shown", isVisible);
        if (isVisible) m_state->panel.refreshOnOpening();
    });
    return m_state->window = window;
}

bool Dashboard::hasModal() const {
    return !m_state->panel.consent()->service().isEmpty() || m_state->panel.folders()->isChoosing();
}

void Dashboard::setRounded(bool rounded) {
    m_state->rounded = rounded;
    if (m_state->window) m_state->window->setProperty("rounded", rounded);
}

} // namespace bridge
