#include "app/shell/failure_box.h"

#include "app/shell/app_icon.h"

namespace bridge {

std::unique_ptr<QMessageBox> failureBox(const std::string& message) {
    auto box = std::make_unique<QMessageBox>(QMessageBox::Critical, productName, QString::fromStdString(message),
                                             QMessageBox::Close);
    // Qt would take what looks like HTML for that.
    box->setTextFormat(Qt::PlainText);
    return box;
}

} // namespace bridge
