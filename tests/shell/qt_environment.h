#pragma once

#include "tests/support/qt_waiting.h"

#include <QApplication>
#include <gtest/gtest.h>
#include <memory>

namespace bridge {

// Qt without a display, for the whole test program. Made before the first test, and not to list them.
class QtEnvironment : public testing::Environment {
public:
    void SetUp() override {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        m_application = std::make_unique<QApplication>(m_count, m_arguments);
        QApplication::setQuitOnLastWindowClosed(false);
    }
    void TearDown() override { m_application.reset(); }

private:
    int m_count = 1;
    char m_name[11] = "shell_test";
    char* m_arguments[2] = {m_name, nullptr};
    std::unique_ptr<QApplication> m_application;
};

} // namespace bridge
