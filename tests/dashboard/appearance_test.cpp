#include "app/dashboard/appearance.h"
#include "app/dashboard/contrast.h"
#include "tests/dashboard/dashboard_test.h"
#include "tests/dashboard/stand_in_portal.h"
#include "tests/support/qt_waiting.h"

#include <QGuiApplication>
#include <QPalette>

namespace bridge {
namespace {

constexpr const char* common = "org.freedesktop.appearance";
constexpr const char* gnome = "org.gnome.desktop.interface";

class Looks : public testing::Test {
protected:
    ~Looks() override { usePalette(Qt::white); }

    static void usePalette(const QColor& background) {
        QPalette palette;
        palette.setColor(QPalette::Window, background);
        QGuiApplication::setPalette(palette);
    }
    bool eventually(const std::function<bool()>& isReached) { return comesTrue(isReached); }
};

TEST_F(Looks, AreThePalettesWithoutAPortal) {
    usePalette(Qt::white);
    Appearance appearance(QDBusConnection("nowhere"));
    EXPECT_FALSE(appearance.isDark());
    EXPECT_FALSE(appearance.isHighContrast());
    EXPECT_FALSE(appearance.isMotionReduced());
    EXPECT_EQ(appearance.textScale(), 1);
    int changes = 0;
    QObject::connect(&appearance, &Appearance::changed, [&] { ++changes; });
    usePalette(QColor(30, 30, 30));
    EXPECT_TRUE(eventually([&] { return changes > 0; }));
    EXPECT_TRUE(appearance.isDark());
}

TEST_F(Looks, AreWhatThePortalSays) {
    if (!StandInPortal::isPossible()) GTEST_SKIP() << "needs dbus-daemon (package dbus)";
    StandInPortal portal;
    portal.settings[common] = {{"color-scheme", 1u}, {"contrast", 1u}, {"accent-color", portal.colour(0.9, 0.4, 0.1)}};
    portal.settings[gnome] = {{"enable-animations", false}, {"text-scaling-factor", 1.25}};
    portal.open();
    Appearance appearance(portal.client());
    ASSERT_TRUE(eventually([&] { return appearance.isDark(); }));
    EXPECT_TRUE(appearance.isHighContrast());
    EXPECT_TRUE(appearance.isMotionReduced());
    EXPECT_EQ(appearance.textScale(), 1.25);
    EXPECT_EQ(portal.asked, QList<QStringList>({{common, gnome}}));
    // The user's orange, made dark enough for white text and light enough as text.
    EXPECT_GT(appearance.accent().red(), appearance.accent().blue());
    EXPECT_GE(contrast(Qt::white, appearance.accent()), readable);
}

TEST_F(Looks, ChangeWithThePortal) {
    if (!StandInPortal::isPossible()) GTEST_SKIP() << "needs dbus-daemon (package dbus)";
    StandInPortal portal;
    portal.settings[common] = {{"color-scheme", 1u}};
    portal.open();
    Appearance appearance(portal.client());
    ASSERT_TRUE(eventually([&] { return appearance.isDark(); }));
    portal.change(common, "color-scheme", 2u);
    EXPECT_TRUE(eventually([&] { return !appearance.isDark(); }));
    portal.change(gnome, "enable-animations", false);
    EXPECT_TRUE(eventually([&] { return appearance.isMotionReduced(); }));
    // Without a wish of the user's the palette counts, and what makes no sense is no wish.
    usePalette(QColor(30, 30, 30));
    portal.change(common, "color-scheme", 0u);
    EXPECT_TRUE(eventually([&] { return appearance.isDark(); }));
    const auto ours = appearance.accent();
    portal.change(common, "accent-color", portal.colour(7, 7, 7));
    portal.change(common, "contrast", 1u);
    EXPECT_TRUE(eventually([&] { return appearance.isHighContrast(); }));
    EXPECT_EQ(appearance.accent(), ours);
}

TEST_F(Looks, AreWithoutMotionWhereOneOfTwoSettingsSaysSo) {
    if (!StandInPortal::isPossible()) GTEST_SKIP() << "needs dbus-daemon (package dbus)";
    StandInPortal portal;
    portal.settings[common] = {{"color-scheme", 1u}, {"reduced-motion", 0u}};
    portal.settings[gnome] = {{"enable-animations", false}};
    portal.open();
    Appearance appearance(portal.client());
    ASSERT_TRUE(eventually([&] { return appearance.isDark(); }));
    EXPECT_TRUE(appearance.isMotionReduced());
    portal.change(common, "reduced-motion", 1u);
    portal.change(gnome, "enable-animations", true);
    portal.change(common, "contrast", 1u);
    ASSERT_TRUE(eventually([&] { return appearance.isHighContrast(); }));
    EXPECT_TRUE(appearance.isMotionReduced());
    portal.change(common, "reduced-motion", 0u);
    EXPECT_TRUE(eventually([&] { return !appearance.isMotionReduced(); }));
}

TEST(Contrast, IsMeasuredAsTheGuidelinesDo) {
    EXPECT_NEAR(contrast(Qt::black, Qt::white), 21, 0.01);
    EXPECT_NEAR(contrast(Qt::white, Qt::white), 1, 0.01);
    EXPECT_NEAR(contrast(QColor(0x77, 0x77, 0x77), Qt::white), 4.48, 0.01);
}

TEST(Contrast, IsMadeWithAsLittleChangeAsPossible) {
    EXPECT_EQ(readableOn(Qt::white, QColor(0, 0, 120)), QColor(0, 0, 120));
    for (const auto& background :
         {QColor(Qt::white), QColor(Qt::black), QColor(0x3b, 0x3b, 0x40), QColor(128, 128, 128)})
        for (const auto& wish : {QColor(Qt::yellow), QColor(Qt::blue), QColor(0xf5, 0xb7, 0x3d), QColor(Qt::gray)})
            EXPECT_GE(contrast(background, readableOn(background, wish)), readable);
}

class Colours : public DashboardTest {
protected:
    QColor colour(const char* name) { return driver->singleton("Theme")->property(name).value<QColor>(); }
    void expectReadable(const char* text, const char* background) {
        EXPECT_GE(contrast(colour(text), colour(background)), readable)
            << text << " on " << background << (driver->singleton("Theme")->property("dark").toBool() ? ", dark" : "");
    }
};

TEST_F(Colours, CanBeReadLightAndDark) {
    openWithEverythingGranted();
    for (const bool dark : {false, true}) {
        QPalette palette;
        palette.setColor(QPalette::Window, dark ? Qt::black : Qt::white);
        QGuiApplication::setPalette(palette);
        driver->settle();
        ASSERT_EQ(driver->singleton("Theme")->property("dark").toBool(), dark);
        for (const auto* text : {"text", "secondary"})
            for (const auto* background : {"window", "bar", "card", "well", "fill"})
                expectReadable(text, background);
        for (const auto* background : {"card", "well", "fill", "fillHover", "fillDown"})
            expectReadable("text", background);
        for (const auto* background : {"card", "well", "fill"})
            expectReadable("accentText", background);
        expectReadable("accentInk", "accent");
        expectReadable("warn", "card");
        expectReadable("bad", "card");
        expectReadable("bad", "badFill");
        // What can be operated, and dots that say something, stand out by 3 to 1.
        for (const auto* mark : {"edge", "good", "warn", "bad"})
            EXPECT_GE(contrast(colour(mark), colour("card")), 3) << mark;
        for (const auto group : allCapabilityGroups) {
            QVariant tint;
            QMetaObject::invokeMethod(driver->singleton("Theme"), "tint", Q_RETURN_ARG(QVariant, tint),
                                      Q_ARG(QVariant, shown(rawValue(group))));
            EXPECT_GE(contrast(Qt::white, QColor(tint.toString())), 3) << rawValue(group);
        }
    }
    QGuiApplication::setPalette(QPalette());
}

} // namespace
} // namespace bridge
