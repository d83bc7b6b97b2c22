#include "app/shell/start_failure.h"

#include "app/shell/app_icon.h"
#include "app/shell/failure_box.h"

#include <QApplication>

namespace bridge {

void showStartFailure(int& count, char** arguments, const std::string& message) {
    QGuiApplication::setApplicationDisplayName(productName);
    QGuiApplication::setDesktopFileName("brindlefox-apple-bridge");
    const QApplication application(count, arguments);
    failureBox(message)->exec();
}

} // namespace bridge
