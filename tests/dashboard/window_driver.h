#pragma once

#include "base/event_loop.h"

#include <QAccessible>
#include <QQuickItem>
#include <QQuickWindow>

#include <functional>
#include <vector>

namespace bridge {

// Works a window as a user does, by mouse and keyboard, and finds in it what the user sees: items that are not visible
// are not there.
class WindowDriver {
public:
    WindowDriver(EventLoop& loop, QQuickWindow& window) : m_loop(loop), m_window(window) {}

    // By object name; null when there is none in sight or a scroll away.
    QQuickItem* find(const QString& name) const;
    // Throws when there is none.
    QQuickItem* item(const QString& name) const;
    std::vector<QQuickItem*> all(const std::function<bool(QQuickItem&)>& wanted) const;
    // The visible texts of the item, from top to bottom.
    QStringList texts(const QString& name) const;
    QStringList texts() const;
    template <typename T> T value(const QString& name, const char* property) const {
        return item(name)->property(property).value<T>();
    }
    bool isOn(const QString& name) const { return value<bool>(name, "on"); }
    bool isEnabled(const QString& name) const { return item(name)->isEnabled(); }

    void reveal(const QString& name);
    void click(const QString& name);
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {});
    void type(const QString& text);
    void focus(const QString& name);
    QString focused() const;

    // "Theme" or "Texts".
    QObject* singleton(const char* name) const;

    // What a screen reader knows of the item.
    QAccessibleInterface* accessible(const QString& name) const;

    // Lets everything happen that is due; until `isReached`, within reason.
    void settle();
    bool eventually(const std::function<bool()>& isReached);

private:
    EventLoop& m_loop;
    QQuickWindow& m_window;
};

} // namespace bridge
