#pragma once

#include "app/dashboard/text.h"
#include "tests/dashboard/installation.h"
#include "tests/dashboard/window_driver.h"

#include <gmock/gmock.h>

#include <ostream>

inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}

namespace bridge {

// The dashboard in its window, off screen and without motion. A warning of Qt or of the QML engine fails the test.
class DashboardTest : public testing::Test {
protected:
    DashboardInstallation bridge;
    QQuickWindow* window = nullptr;
    std::unique_ptr<WindowDriver> driver;

    // Shows it. What the test wants otherwise in `bridge` comes before.
    void open() {
        bridge.assemble();
        window = bridge.dashboard->window();
        driver = std::make_unique<WindowDriver>(bridge.loop, *window);
        driver->singleton("Theme")->setProperty("reduceMotion", true);
        window->show();
        window->requestActivate();
        driver->settle();
    }
    void openWithEverythingGranted() {
        bridge.grantEverything();
        open();
    }
    // And with a group open.
    void openAt(const QString& group) {
        openWithEverythingGranted();
        driver->click("group." + group);
    }

    BridgeModel& model() { return *bridge.model; }
    QString word(const char* name) { return driver->singleton("Texts")->property(name).toString(); }
};

} // namespace bridge
