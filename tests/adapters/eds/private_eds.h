#pragma once

#include "tests/support/private_bus.h"

namespace bridge {

// Evolution Data Server on a bus of the tests' own, with a home of its own, for the whole program. Each kind of backend
// has a process, so that one can be stopped while the others go on.
class PrivateEds : public PrivateBus {
public:
    // The service that keeps the items; each program of tests says which one it is about.
    static const std::string factoryService;

    // The one of this program.
    static PrivateEds& get();
    // Why there can be none on this machine.
    static std::string hindrance();

    void SetUp() override;
    void TearDown() override;

    // Ends every process of it, with everything saved, and lets the bus start no other until install().
    void uninstall();
    void install();
    // A service that ends as soon as it is started, until install().
    void installBroken();
    // Ends every process of it by force; the bus may start it again.
    void kill();

    pid_t registry() const;
    pid_t factory() const;
    // The processes of the backends that run now.
    std::vector<pid_t> backends() const;

private:
    void write(const std::string& service, const std::string& command) const;
    std::vector<std::string> ownNames() const;
    void end(int signal);

    std::optional<TemporaryFolder> m_home;
};

} // namespace bridge
