#pragma once

#include <QApplication>
#include <QElapsedTimer>
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

// Lets everything happen that happens, until the condition holds. False when it has not for half a minute.
template <typename Condition> bool comesTrue(Condition condition) {
    constexpr qint64 patience = 30'000;
    QElapsedTimer time;
    for (time.start(); !condition() && time.elapsed() < patience;)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::AllEvents, 50);
    return condition();
}

} // namespace bridge
