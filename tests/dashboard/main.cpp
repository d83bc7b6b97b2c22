#include "app/process.h"

#include <QGuiApplication>
#include <gtest/gtest.h>

namespace {

// The platform without a screen says this of every window.
bool isOfThePlatform(const QString& message) {
    return message == "This plugin does not support propagateSizeHints()";
}

void handle(QtMsgType type, const QMessageLogContext& context, const QString& message) {
    if (type == QtDebugMsg || type == QtInfoMsg || isOfThePlatform(message)) return;
    ADD_FAILURE() << "Qt says: " << message.toStdString() << " (" << (context.file ? context.file : "") << ':'
                  << context.line << ')';
}

} // namespace

int main(int count, char** arguments) {
    testing::InitGoogleTest(&count, arguments);
    // On no screen, with the same letters everywhere, and with nobody's wishes for colours.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("DBUS_SESSION_BUS_ADDRESS", "disabled:");
    bridge::prepareProcess();
    const QGuiApplication application(count, arguments);
    qInstallMessageHandler(handle); // from here on: what the machine lacks is said at the start
    return RUN_ALL_TESTS();
}
