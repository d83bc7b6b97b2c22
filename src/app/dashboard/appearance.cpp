#include "app/dashboard/appearance.h"

#include "app/dashboard/contrast.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QEvent>
#include <QGuiApplication>
#include <QPalette>

#include <algorithm>

namespace bridge {

namespace {

constexpr const char* service = "org.freedesktop.portal.Desktop";
constexpr const char* path = "/org/freedesktop/portal/desktop";
constexpr const char* interface = "org.freedesktop.portal.Settings";
constexpr const char* common = "org.freedesktop.appearance";
constexpr const char* gnome = "org.gnome.desktop.interface";

const QColor ours(0x3d, 0x63, 0xe6);
// What is behind the text of buttons, where that is hardest to read.
const QColor darkest(0x3b, 0x3b, 0x40);
const QColor lightest(0xec, 0xec, 0xef);

using Settings = QMap<QString, QVariantMap>;

// Three numbers from 0 to 1; any other means that the user has no wish.
QColor colour(const QVariant& value) {
    if (!value.canConvert<QDBusArgument>()) return {};
    const auto argument = value.value<QDBusArgument>();
    if (argument.currentSignature() != "(ddd)") return {};
    double red = -1, green = -1, blue = -1;
    argument.beginStructure();
    argument >> red >> green >> blue;
    argument.endStructure();
    const auto inRange = [](double part) { return part >= 0 && part <= 1; };
    if (!inRange(red) || !inRange(green) || !inRange(blue)) return {};
    return QColor::fromRgbF(static_cast<float>(red), static_cast<float>(green), static_cast<float>(blue));
}

} // namespace

Appearance::Appearance(const QDBusConnection& bus) {
    qApp->installEventFilter(this);
    if (!bus.isConnected()) return;
    qRegisterMetaType<QDBusVariant>(); // or the slot is not found
    qDBusRegisterMetaType<Settings>();
    auto connection = bus;
    connection.connect(service, path, interface, "SettingChanged", this, SLOT(setting(QString, QString, QDBusVariant)));
    auto call = QDBusMessage::createMethodCall(service, path, interface, "ReadAll");
    call << QStringList{common, gnome};
    auto* reply = new QDBusPendingCallWatcher(connection.asyncCall(call), this);
    connect(reply, &QDBusPendingCallWatcher::finished, this, &Appearance::readAll);
}

bool Appearance::isDark() const {
    if (m_scheme != Scheme::noPreference) return m_scheme == Scheme::dark;
    return QGuiApplication::palette().color(QPalette::Window).lightnessF() < 0.5F;
}

QColor Appearance::accent() const {
    return readableOn(Qt::white, m_accent.isValid() ? m_accent : ours);
}

QColor Appearance::accentText() const {
    return readableOn(isDark() ? darkest : lightest, m_accent.isValid() ? m_accent : ours);
}

void Appearance::readAll(QDBusPendingCallWatcher* watcher) {
    const QDBusPendingReply<Settings> reply = *watcher;
    watcher->deleteLater();
    if (reply.isError()) return;
    const auto settings = reply.value();
    for (auto group = settings.begin(); group != settings.end(); ++group)
        for (auto each = group->begin(); each != group->end(); ++each)
            take(group.key(), each.key(), each.value());
    emit changed();
}

void Appearance::setting(const QString& group, const QString& key, const QDBusVariant& value) {
    take(group, key, value.variant());
    emit changed();
}

void Appearance::take(const QString& group, const QString& key, const QVariant& value) {
    if (group == common && key == "color-scheme")
        m_scheme = value.toUInt() == 1 ? Scheme::dark : value.toUInt() == 2 ? Scheme::light : Scheme::noPreference;
    else if (group == common && key == "contrast")
        m_isHighContrast = value.toUInt() == 1;
    else if (group == common && key == "accent-color")
        m_accent = colour(value);
    else if (group == common && key == "reduced-motion")
        m_wantsLessMotion = value.toUInt() == 1;
    else if (group == gnome && key == "enable-animations")
        m_animates = value.toBool();
    else if (group == gnome && key == "text-scaling-factor")
        m_textScale = std::clamp(value.toDouble(), 0.75, 2.0);
}

bool Appearance::eventFilter(QObject* watched, QEvent* event) {
    if (watched == qApp && event->type() == QEvent::ApplicationPaletteChange) emit changed();
    return QObject::eventFilter(watched, event);
}

} // namespace bridge
