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

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
// Qt Quick keeps pictures that are no longer shown for half a minute, and at the end of the program drops them. Only
// whole stacks tell these from what might be ours, and Qt's can't be walked the fast way.
extern "C" const char* __lsan_default_suppressions() {
    return "leak:QQuickPixmap::load\nleak:QQuickImage::updatePaintNode\n";
}
extern "C" const char* __asan_default_options() {
    return "fast_unwind_on_malloc=0";
}
#endif
#endif

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
