#pragma once

#include "tests/support/child_process.h"
#include "tests/support/temporary_folder.h"

#include <memory>

namespace bridge {

// A GNOME Keyring on the tests' own bus, with a home of its own. It may be ended and started again over the same home.
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
