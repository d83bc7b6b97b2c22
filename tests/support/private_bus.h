#pragma once

#include "adapters/dbus/glib_pointer.h"
#include "tests/support/child_process.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>
#include <optional>

namespace bridge {

// A session bus of the tests' own for the whole program, since GLib keeps to the first bus it meets. It starts no
// service but those in serviceFolder(), and they end with it.
class PrivateBus : public testing::Environment {
public:
    static bool isPossible() { return ChildProcess::isInstalled("dbus-daemon"); }

    const std::string& address() const { return m_address; }
    // A connection that shares nothing with the code under test.
    GObjectPointer<GDBusConnection> connect() const;
    // Where the bus finds the *.service files of those that it starts; it looks again at reload().
    std::filesystem::path serviceFolder() const { return *m_folder / "services"; }
    void reload() const;
    // Blocks until somebody owns the name, or nobody does.
    enum class Owned { no, yes };
    void waitUntil(Owned owned, const std::string& name) const;
    // The process that owns the name; 0 when nobody does.
    pid_t processOf(const std::string& name) const;
    std::vector<std::string> names() const;

    void SetUp() override { start({}); }
    void TearDown() override;

protected:
    // Services that the bus starts have this environment, and no other.
    void start(const std::map<std::string, std::string>& environment);
    const TemporaryFolder& folder() const { return *m_folder; }

private:
    GLibPointer<GVariant> call(const char* method, GVariant* arguments, const char* type) const;

    std::optional<TemporaryFolder> m_folder;
    std::unique_ptr<ChildProcess> m_daemon;
    std::string m_address;
};

} // namespace bridge
