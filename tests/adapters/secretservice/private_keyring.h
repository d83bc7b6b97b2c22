#pragma once

#include "tests/adapters/secretservice/child_process.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>
#include <memory>
#include <optional>

namespace bridge {

// A session bus of the tests' own, which starts no service by itself, for the whole program: GLib keeps to the first
// bus it meets.
class PrivateBus : public testing::Environment {
public:
    static bool isPossible() { return ChildProcess::isInstalled("dbus-daemon"); }
    static const std::string& address();

    void SetUp() override;
    void TearDown() override;

private:
    std::optional<TemporaryFolder> m_folder;
    std::unique_ptr<ChildProcess> m_daemon;
};

// A GNOME Keyring on that bus with a home of its own. It may be ended and started again over the same home.
class PrivateKeyring {
public:
    enum class State { unlocked, locked };

    // Why there can be none on this machine.
    static std::string hindrance();

    bool isRunning() const { return m_daemon != nullptr; }
    // Returns when it has taken its name on the bus.
    void start(State state);
    // Returns when the name is free.
    void end();
    // What a user does who locks the keyring.
    void lock();
    void pause() { m_daemon->send(SIGSTOP); }
    void goOn() { m_daemon->send(SIGCONT); }

private:
    TemporaryFolder m_home;
    std::unique_ptr<ChildProcess> m_daemon;
};

} // namespace bridge
