#include "app/shell/start_failure.h"

#include "app/shell/app_icon.h"

#include <QApplication>
#include <QMessageBox>

namespace bridge {

void showStartFailure(int& count, char** arguments, const std::string& message) {
    QGuiApplication::setApplicationDisplayName(productName);
    QGuiApplication::setDesktopFileName("brindlefox-apple-bridge");
    const QApplication application(count, arguments);
    QMessageBox box(QMessageBox::Critical, productName, QString::fromStdString(message), QMessageBox::Close);
    // Qt would take what looks like HTML for that.
    box.setTextFormat(Qt::PlainText);
    box.exec();
}

} // namespace bridge
