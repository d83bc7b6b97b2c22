#pragma once

#include "base/file_descriptor.h"
#include "tests/contracts/local_search_fixture.h"
#include "tools/agent_server/stand_in_agent_server.h"

#include <atomic>
#include <mutex>
#include <thread>

namespace bridge {

// A server with Nominatim's interface on 127.0.0.1, with a thread of its own: finds the places of a small world by
// words that they all have, those in the viewbox first, then the larger ones.
class StandInNominatim {
public:
    explicit StandInNominatim(std::vector<WorldPlace> world);
    ~StandInNominatim();
    StandInNominatim(const StandInNominatim&) = delete;
    StandInNominatim& operator=(const StandInNominatim&) = delete;

    // Below a path, as some are.
    std::string url() const;
    // From now on every answer is these bytes, head and all.
    void answerWith(std::string bytes);
    std::vector<StandInAgentServer::Received> received() const;

private:
    void serve();
    void serveOne(const FileDescriptor& connection);
    std::string answerTo(const StandInAgentServer::Received& request) const;

    std::vector<WorldPlace> m_world;
    FileDescriptor m_listener;
    std::atomic<bool> m_isOver = false;
    mutable std::mutex m_mutex; // guards what follows
    std::vector<StandInAgentServer::Received> m_received;
    std::string m_scripted;
    std::thread m_thread; // last, when all it uses is there
};

} // namespace bridge
