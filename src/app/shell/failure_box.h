#pragma once

#include <QMessageBox>

#include <memory>
#include <string>

namespace bridge {

// A window that says what went wrong, for a user who would wait for another one in vain. Hidden at first.
std::unique_ptr<QMessageBox> failureBox(const std::string& message);

} // namespace bridge
