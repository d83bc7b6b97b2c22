#pragma once

#include "tests/support/child_process.h"
#include "tests/support/temporary_folder.h"

#include <memory>

namespace bridge {

// A GeoClue on the tests' own system bus, with a configuration that no other program sees. The one source it has is a
// receiver at receiverSocket().
class PrivateGeoClue {
public:
    enum class Us { allowed, refused };

    // Why there can be none on this machine.
    static std::string hindrance();

    // Returns when it has taken its name on the bus.
    void start(Us us);
    // The agent without which GeoClue makes no client for anybody.
    void startAgent();
    // Kills it. Returns when the name is free.
    void end();
    // Whether it looks for the place for somebody.
    bool isInUse() const;

    std::string receiverSocket() const { return m_folder.file("receiver"); }

    PrivateGeoClue() = default;
    PrivateGeoClue(const PrivateGeoClue&) = delete;
    PrivateGeoClue& operator=(const PrivateGeoClue&) = delete;
    ~PrivateGeoClue() { end(); }

private:
    std::map<std::string, std::string> environment() const;

    TemporaryFolder m_folder;
    std::unique_ptr<ChildProcess> m_service;
    std::unique_ptr<ChildProcess> m_agent;
};

} // namespace bridge
