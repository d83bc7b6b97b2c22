#include "app/process.h"
#include "tests/dashboard/installation.h"
#include "tests/dashboard/window_driver.h"

#include <QGuiApplication>
#include <QPalette>

#include <cstdio>

// Writes pictures of the dashboard into a folder: screenshots FOLDER [light|dark]. QT_SCALE_FACTOR=2 makes them large.

namespace {

using namespace bridge;

class Pictures {
public:
    Pictures(QString folder, QString look) : m_folder(std::move(folder)), m_look(std::move(look)) {
        m_bridge.grantEverything();
        m_bridge.authorization->setStatus(PrivacyService::contacts, 0);
        m_bridge.authorization->setStatus(PrivacyService::music, 1);
        m_bridge.authorization->setStatus(PrivacyService::location, 0);
        m_bridge.login->now = LoginItemStatus::enabled;
        m_bridge.assemble();
        m_window = m_bridge.dashboard->window();
        m_driver = std::make_unique<WindowDriver>(m_bridge.loop, *m_window);
        m_driver->singleton("Theme")->setProperty("reduceMotion", true);
        m_window->show();
        // Colours had begun to change before.
        const auto* button = m_driver->item("refresh")->property("background").value<QQuickItem*>();
        const auto wanted = m_driver->singleton("Theme")->property("fill").value<QColor>();
        m_driver->eventually([&] { return button->property("color").value<QColor>() == wanted; });
    }

    void takeAll() {
        auto& model = *m_bridge.model;
        model.setGroupEnabled(BridgeCapabilityGroup::calendar, true);
        model.setEnabled(BridgeCapability::calendarEventDelete, false);
        model.setEnabled(BridgeCapability::calendarDelete, false);
        model.setGroupEnabled(BridgeCapabilityGroup::reminders, true);
        model.setGroupEnabled(BridgeCapabilityGroup::files, true);
        model.setEnabled(BridgeCapability::contactsRead, true);
        m_bridge.loop.runUntilDone(model.setCalendar("personal", true));
        m_bridge.loop.runUntilDone(model.setReminderList("errands", true));
        take("unpaired");

        m_bridge.agentServer->willAnswer(200, R"({"credential":"c"})");
        m_bridge.loop.runUntilDone(model.pair("ABCD"));
        take("paired");

        m_driver->click("group.calendar");
        take("calendar");
        m_driver->reveal("resources.calendar");
        take("calendars");

        model.files.roots.set({{"1", "Documents", "/home/kim/Documents"}, {"2", "Archive", "/media/archive"}});
        model.readOnlyFolderIDs.set({"2"});
        m_driver->click("group.files");
        m_driver->reveal("addFolder");
        take("folders");

        m_driver->click("group.files");
        m_driver->click("access.contacts");
        take("consent");
        m_driver->click("dontAllow");

        m_bridge.loop.runUntilDone(model.unpair());
        m_bridge.agentServer->willAnswer(403, R"({"error":"This code has expired. Generate a new one."})");
        m_bridge.login->failure = "The folder of programs that start at login can't be written.";
        model.setLaunchAtLogin(false);
        m_driver->reveal("pairingCode");
        m_driver->item("pairingCode")->setProperty("text", "QW3RTY");
        m_driver->click("pair");
        m_driver->eventually([&] { return model.pairingStatusMessage.get().has_value(); });
        m_driver->reveal("pairingMessage");
        take("errors");
    }

private:
    void take(const QString& name) {
        m_driver->settle();
        const auto file = m_folder + "/" + name + "-" + m_look + ".png";
        if (!m_window->grabWindow().convertToFormat(QImage::Format_RGB888).save(file))
            throw std::runtime_error("could not write " + file.toStdString());
    }

    QString m_folder;
    QString m_look;
    DashboardInstallation m_bridge;
    QQuickWindow* m_window;
    std::unique_ptr<WindowDriver> m_driver;
};

QPalette dark() {
    QPalette palette;
    palette.setColor(QPalette::Window, QColor(32, 32, 32));
    return palette;
}

} // namespace

int main(int count, char** arguments) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("DBUS_SESSION_BUS_ADDRESS", "disabled:");
    prepareProcess();
    QGuiApplication application(count, arguments);
    const auto words = QGuiApplication::arguments();
    if (words.size() < 2) {
        std::fputs("usage: screenshots FOLDER [light|dark]\n", stderr);
        return 2;
    }
    const auto look = words.value(2, "light");
    if (look == "dark") QGuiApplication::setPalette(dark());
    try {
        Pictures(words[1], look).takeAll();
    } catch (const std::exception& error) {
        std::fprintf(stderr, "screenshots: %s\n", error.what());
        return 1;
    }
    return 0;
}
