#pragma once

#include "base/event_loop.h"
#include "base/published.h"
#include "base/timer.h"
#include "server/bridge_router.h"

#include <cstdint>
#include <variant>

namespace bridge {

class ConnectionPool;

// What the server is doing, for the dashboard.
struct ServerStopped {
    bool operator==(const ServerStopped&) const = default;
};
struct ServerStarting {
    bool operator==(const ServerStarting&) const = default;
};
struct ServerListening {
    uint16_t port;
    bool operator==(const ServerListening&) const = default;
};
struct ServerFailed {
    std::string message;
    bool operator==(const ServerFailed&) const = default;
};
using BridgeServerState = std::variant<ServerStopped, ServerStarting, ServerListening, ServerFailed>;

// Listens on 127.0.0.1:32123 and nowhere else, reads one HTTP request from each connection, answers it and closes. Main
// thread only. Destroying the server drops its connections without an answer; loop, router and clock outlive it.
class BridgeHTTPServer {
public:
    static constexpr const char* address = "127.0.0.1";
    static constexpr uint16_t port = 32123;

    BridgeHTTPServer(EventLoop& loop, BridgeRouter& router, const Clock& clock);
    ~BridgeHTTPServer();

    Published<BridgeServerState> state;

    // Begins to listen; nothing happens when it already does. After a failure it may be called again.
    void start();
    // Stops accepting. Requests under way are still answered.
    void stop();

private:
    class Listener;

    void accept(int status);
    void fail(int code);
    void recoverLater();

    EventLoop& m_loop;
    std::unique_ptr<ConnectionPool> m_connections;
    std::unique_ptr<Listener> m_listener;
    Timer m_recovery;
};

} // namespace bridge
