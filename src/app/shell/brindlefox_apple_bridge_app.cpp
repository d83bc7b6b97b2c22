#include "app/shell/brindlefox_apple_bridge_app.h"

#include "adapters/glib/glib_loop_source.h"
#include "app/instance_socket.h"
#include "app/shell/app_icon.h"
#include "app/shell/bridge_app_delegate.h"
#include "app/shell/dashboard_module.h"
#include "app/shell/desktop_folder_chooser.h"
#include "app/shell/display.h"
#include "app/shell/display_loss.h"
#include "app/shell/session_bus.h"
#include "app/start_up.h"
#include "base/log.h"
#include "base/termination_signals.h"

#include <QApplication>
#include <QPointer>
#include <QSessionManager>

#include <optional>

namespace bridge {

namespace {

void prepareQt() {
    // Our loop is a source of GLib's, which Qt must therefore run on.
    qunsetenv("QT_NO_GLIB");
    QCoreApplication::setApplicationName("brindlefox-apple-bridge");
    QGuiApplication::setApplicationDisplayName(productName);
    QGuiApplication::setDesktopFileName("brindlefox-apple-bridge");
    QGuiApplication::setQuitOnLastWindowClosed(false);
}

// Launch at login is for the dashboard's switch; a session that restores its programs is not to start another.
void leaveRestoringToOthers(const QApplication& application) {
    const auto never = [](QSessionManager& session) { session.setRestartHint(QSessionManager::RestartNever); };
    for (const auto request : {&QGuiApplication::commitDataRequest, &QGuiApplication::saveStateRequest})
        QObject::connect(&application, request, &application, never, Qt::DirectConnection);
}

// The model keeps it until it is done.
Task<> startModel(BridgeModel& model) {
    co_await model.start();
    noteState(model);
}

} // namespace

BrindlefoxAppleBridgeApp::BrindlefoxAppleBridgeApp(int& count, char** arguments, std::string instances)
    : m_count(count), m_arguments(arguments), m_instances(std::move(instances)) {}

int BrindlefoxAppleBridgeApp::run(Options::Action action, const std::string& activationToken) {
    prepareQt();
    // From here on each thing is destroyed before what it stands on: windows before the model, Qt last.
    QApplication application(m_count, m_arguments);
    restoreDisplayChoice();
    leaveRestoringToOthers(application);
    const DisplayLoss displayLoss;
    EventLoop loop;
    log::gatherOn(loop);
    // A later start may come before this one has got anywhere.
    QPointer<BridgeAppDelegate> delegate;
    std::optional<QString> wantedEarly;
    const InstanceSocket laterStarts(loop, m_instances, [&](const InstanceMessage& message) {
        const auto token = QString::fromStdString(message.activationToken);
        if (message.wish != InstanceWish::showDashboard) return InstanceAnswer::done;
        if (delegate)
            delegate->showDashboard(token);
        else
            wantedEarly = token;
        return InstanceAnswer::done;
    });

    auto consent = std::make_unique<ConsentQuestion>();
    auto& question = *consent;
    auto platform = openDesktopPlatform(loop, std::move(consent));
    platform.folderChooser = std::make_unique<DesktopFolderChooser>(loop);
    BridgeCapabilityPolicy policy(*platform.defaults);
    BridgeModel model(loop, platform, policy);
    const auto end = [&model] {
        model.httpServer.stop();
        QApplication::quit();
    };
    const TerminationSignals termination(loop, end);

    const GLibLoopSource source(loop);
    const auto bus = qtSessionBus();
    BridgeAppDelegate theDelegate(model, question, bus, [&] { return loadDashboard(model, question, bus); });
    delegate = &theDelegate;
    QObject::connect(delegate, &BridgeAppDelegate::quitRequested, &application, end);
    delegate->launch();
    if (action == Options::Action::start) delegate->showDashboard(QString::fromStdString(activationToken));
    if (wantedEarly) delegate->showDashboard(*wantedEarly);
    // Last: a keyring or calendars that hang keep nobody from the icon.
    model.perform(startModel(model));
    const int code = QApplication::exec();
    log::flush();
    return code;
}

} // namespace bridge
