#include "tests/dashboard/window_driver.h"

#include "tests/support/qt_waiting.h"

#include <QCoreApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QTest>

#include <memory>
#include <stdexcept>

namespace bridge {

namespace {

void visit(QQuickItem* item, const std::function<void(QQuickItem&)>& take) {
    if (!item->isVisible()) return;
    take(*item);
    for (auto* child : item->childItems())
        visit(child, take);
}

} // namespace

std::vector<QQuickItem*> WindowDriver::all(const std::function<bool(QQuickItem&)>& wanted) const {
    std::vector<QQuickItem*> found;
    visit(m_window.contentItem(), [&](QQuickItem& each) {
        if (wanted(each)) found.push_back(&each);
    });
    return found;
}

QQuickItem* WindowDriver::find(const QString& name) const {
    const auto found = all([&](QQuickItem& each) { return each.objectName() == name; });
    return found.empty() ? nullptr : found.front();
}

QQuickItem* WindowDriver::item(const QString& name) const {
    auto* found = find(name);
    if (!found) throw std::runtime_error("not in the window: " + name.toStdString());
    return found;
}

QStringList WindowDriver::texts(const QString& name) const {
    QStringList found;
    visit(name.isEmpty() ? m_window.contentItem() : item(name), [&](QQuickItem& each) {
        const auto text = each.property("text").toString();
        if (each.inherits("QQuickText") && !text.isEmpty()) found << text;
    });
    return found;
}

QStringList WindowDriver::texts() const {
    return texts({});
}

void WindowDriver::reveal(const QString& name) {
    auto* wanted = item(name);
    auto* viewport = item("viewport");
    for (auto* each = wanted; each; each = each->parentItem())
        if (each == viewport)
            QMetaObject::invokeMethod(viewport, "reveal", Q_ARG(QVariant, QVariant::fromValue(wanted)),
                                      Q_ARG(QVariant, 0), Q_ARG(QVariant, wanted->height()));
    settle();
}

void WindowDriver::click(const QString& name) {
    reveal(name);
    auto* wanted = item(name);
    QTest::mouseClick(&m_window, Qt::LeftButton, {},
                      wanted->mapToScene({wanted->width() / 2, wanted->height() / 2}).toPoint());
    settle();
}

void WindowDriver::press(Qt::Key key, Qt::KeyboardModifiers modifiers) {
    QTest::keyClick(&m_window, key, modifiers);
    settle();
}

void WindowDriver::type(const QString& text) {
    for (const auto each : text)
        QTest::keyClick(&m_window, each.toLatin1());
    settle();
}

void WindowDriver::focus(const QString& name) {
    item(name)->forceActiveFocus(Qt::TabFocusReason);
    settle();
}

QString WindowDriver::focused() const {
    const auto* focused = m_window.activeFocusItem();
    return focused ? focused->objectName() : QString();
}

QObject* WindowDriver::singleton(const char* name) const {
    QQmlComponent component(qmlEngine(&m_window));
    component.setData(QByteArray("import QtQml; import Brindlefox; QtObject { property QtObject it: ") + name + " }",
                      {});
    const std::unique_ptr<QObject> holder(component.create());
    if (!holder) throw std::runtime_error(component.errorString().toStdString());
    return holder->property("it").value<QObject*>();
}

QAccessibleInterface* WindowDriver::accessible(const QString& name) const {
    return QAccessible::queryAccessibleInterface(item(name));
}

void WindowDriver::settle() {
    // Each may bring the other something to do.
    for (int round = 0; round < 4; ++round) {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        m_loop.turn();
    }
    // Lists make their rows when a frame is due.
    bool drawn = !m_window.isExposed();
    const auto watch = QObject::connect(&m_window, &QQuickWindow::afterRendering, [&] { drawn = true; });
    m_window.update();
    const bool isDrawn = comesTrue([&] { return drawn; });
    QObject::disconnect(watch);
    if (!isDrawn) throw std::runtime_error("the window draws no frame");
}

bool WindowDriver::eventually(const std::function<bool()>& isReached) {
    return comesTrue([&] {
        settle();
        return isReached();
    });
}

} // namespace bridge
