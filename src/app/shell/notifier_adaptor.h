#pragma once

#include "app/shell/notifier_item.h"

#include <QByteArray>
#include <QDBusAbstractAdaptor>
#include <QDBusArgument>
#include <QList>

namespace bridge {

// A picture as panels take it: rows of pixels of four bytes, alpha, red, green, blue.
struct NotifierPicture {
    int width = 0;
    int height = 0;
    QByteArray pixels;
};
using NotifierPictures = QList<NotifierPicture>;

struct NotifierToolTip {
    QString iconName;
    NotifierPictures pictures;
    QString title;
    QString text;
};

// As QtDBus wants them said.
QDBusArgument& operator<<(QDBusArgument& message, const NotifierPicture& picture);
const QDBusArgument& operator>>(const QDBusArgument& message, NotifierPicture& picture);
QDBusArgument& operator<<(QDBusArgument& message, const NotifierToolTip& tip);
const QDBusArgument& operator>>(const QDBusArgument& message, NotifierToolTip& tip);

NotifierPictures picturesOf(const QIcon& icon);

// The words of org.kde.StatusNotifierItem.
class NotifierAdaptor : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierItem")
    Q_PROPERTY(QString Category READ category)
    Q_PROPERTY(QString Id READ id)
    Q_PROPERTY(QString Title READ title)
    Q_PROPERTY(QString Status READ status)
    Q_PROPERTY(int WindowId READ windowId)
    // A name would have panels show the theme's icon and not the picture.
    Q_PROPERTY(QString IconName READ none)
    Q_PROPERTY(bridge::NotifierPictures IconPixmap READ pictures)
    Q_PROPERTY(QString IconAccessibleDesc READ accessibleDescription)
    Q_PROPERTY(QString OverlayIconName READ none)
    Q_PROPERTY(QString AttentionIconName READ none)
    Q_PROPERTY(bridge::NotifierToolTip ToolTip READ toolTip)
    Q_PROPERTY(bool ItemIsMenu READ isMenu)

public:
    explicit NotifierAdaptor(NotifierItem& item);

    QString category() const { return "ApplicationStatus"; }
    QString id() const { return m_item.looks().id; }
    QString title() const { return m_item.looks().title; }
    QString status() const { return "Active"; }
    int windowId() const { return 0; }
    NotifierPictures pictures() const { return picturesOf(m_item.looks().icon); }
    QString accessibleDescription() const { return m_item.looks().accessibleDescription; }
    QString none() const { return {}; }
    NotifierToolTip toolTip() const { return {{}, {}, m_item.looks().title, {}}; }
    // There is no menu: every click is for the item itself.
    bool isMenu() const { return false; }

public slots:
    void Activate(int x, int y) { emit m_item.activated({x, y}); }
    void ContextMenu(int x, int y) { emit m_item.activated({x, y}); }
    void SecondaryActivate(int, int) {}
    void Scroll(int, const QString&) {}
    void ProvideXdgActivationToken(const QString& token) { emit m_item.activationTokenGiven(token); }

signals:
    void NewTitle();
    void NewIcon();
    void NewAttentionIcon();
    void NewOverlayIcon();
    void NewToolTip();
    void NewStatus(const QString& status);

private:
    NotifierItem& m_item;
};

} // namespace bridge

Q_DECLARE_METATYPE(bridge::NotifierPicture)
Q_DECLARE_METATYPE(bridge::NotifierPictures)
Q_DECLARE_METATYPE(bridge::NotifierToolTip)
