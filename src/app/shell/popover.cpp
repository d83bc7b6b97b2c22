#include "app/shell/popover.h"

#include "app/shell/popover_place.h"
#include "app/shell/x11.h"

#include <QCursor>
#include <QGuiApplication>
#include <QScreen>

namespace bridge {

Popover::Popover(QWindow& window, std::function<bool()> hasModal, Clock now)
    : m_window(window), m_hasModal(std::move(hasModal)), m_now(std::move(now)), m_size(window.size()) {
    connect(&window, &QWindow::activeChanged, this, &Popover::noteActive);
}

void Popover::show(const std::optional<QRect>& anchor) {
    if (!isShown()) {
        emit aboutToShow();
        place(anchor);
        keepOutOfTaskbar(m_window);
        m_window.show();
    }
    m_window.raise();
    m_window.requestActivate();
}

void Popover::hide() {
    m_window.hide();
}

void Popover::toggle(const std::optional<QRect>& anchor) {
    const bool isSameClick = m_deactivated && m_now() - *m_deactivated < sameClick;
    m_deactivated.reset();
    if (isShown()) return hide();
    if (!isSameClick) show(anchor);
}

void Popover::place(const std::optional<QRect>& anchor) {
    auto* screen = QGuiApplication::screenAt(anchor ? anchor->center() : QCursor::pos());
    if (!screen) screen = QGuiApplication::primaryScreen();
    const ScreenSpace space{screen->geometry(), screen->availableGeometry()};
    m_window.setScreen(screen);
    m_window.setGeometry(anchor ? popoverPlace(*anchor, m_size, space) : popoverPlace(m_size, space));
}

void Popover::noteActive() {
    if (m_window.isActive() || !isShown() || m_hasModal()) return;
    hide();
    m_deactivated = m_now(); // hiding takes its time, too
}

} // namespace bridge
