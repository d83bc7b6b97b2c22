#pragma once

#include <QObject>
#include <QRect>
#include <QWindow>

#include <chrono>
#include <functional>
#include <optional>

namespace bridge {

// A window that belongs to an icon and goes away when the user turns to something else, except while `hasModal` says
// that something in it waits for him. The window is another's and outlives this.
class Popover : public QObject {
    Q_OBJECT

public:
    using Clock = std::function<std::chrono::steady_clock::time_point()>;

    // A click on the icon reaches us after the click has turned the user away from the popover. Within this time of
    // that it is the same click, and was meant to close it.
    static constexpr std::chrono::milliseconds sameClick{250};

    Popover(QWindow& window, std::function<bool()> hasModal, Clock now = std::chrono::steady_clock::now);

    bool isShown() const { return m_window.isVisible(); }

    // Shows it, or brings it to the front, and gives it the keyboard. `anchor` is the icon; without it the window
    // comes to the middle of the screen.
    void show(const std::optional<QRect>& anchor);
    void hide();
    // What a click on the icon means.
    void toggle(const std::optional<QRect>& anchor);

signals:
    void aboutToShow();

private:
    void place(const std::optional<QRect>& anchor);
    void noteActive();

    QWindow& m_window;
    std::function<bool()> m_hasModal;
    Clock m_now;
    QSize m_size;
    std::optional<std::chrono::steady_clock::time_point> m_deactivated;
};

} // namespace bridge
