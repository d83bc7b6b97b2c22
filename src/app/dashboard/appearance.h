#pragma once

#include <QColor>
#include <QDBusConnection>
#include <QDBusVariant>
#include <QObject>
#include <QQmlEngine>
#include <QVariantMap>

class QDBusPendingCallWatcher;

namespace bridge {

// How the user wants programs to look, as the desktop's portal says and goes on saying. What it doesn't say, or where
// there is none, the palette says.
class Appearance : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("of the dashboard")
    Q_PROPERTY(bool isDark READ isDark NOTIFY changed)
    Q_PROPERTY(bool isHighContrast READ isHighContrast NOTIFY changed)
    Q_PROPERTY(bool isMotionReduced READ isMotionReduced NOTIFY changed)
    // The colour that the user likes, or ours: for what white text stands on, and for text.
    Q_PROPERTY(QColor accent READ accent NOTIFY changed)
    Q_PROPERTY(QColor accentText READ accentText NOTIFY changed)
    // For text: 1 as designed.
    Q_PROPERTY(double textScale READ textScale NOTIFY changed)

public:
    explicit Appearance(const QDBusConnection& bus);

    bool isDark() const;
    bool isHighContrast() const { return m_isHighContrast; }
    bool isMotionReduced() const { return m_wantsLessMotion || !m_animates; }
    QColor accent() const;
    QColor accentText() const;
    double textScale() const { return m_textScale; }

    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    void changed();

private slots:
    void setting(const QString& group, const QString& key, const QDBusVariant& value);

private:
    enum class Scheme { noPreference, dark, light };

    void readAll(QDBusPendingCallWatcher* reply);
    void take(const QString& group, const QString& key, const QVariant& value);

    Scheme m_scheme = Scheme::noPreference;
    bool m_isHighContrast = false;
    // Two settings for the same: one is enough.
    bool m_wantsLessMotion = false;
    bool m_animates = true;
    QColor m_accent; // invalid without a wish
    double m_textScale = 1;
};

} // namespace bridge
