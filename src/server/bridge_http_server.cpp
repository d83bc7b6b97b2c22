#include "server/bridge_http_server.h"

#include "base/log.h"
#include "server/connection.h"

#include <uv.h>

namespace bridge {

namespace {

// After a failure to accept the server waits this long and listens anew, rather than fail over and over.
constexpr std::chrono::seconds recoveryTime(1);

} // namespace

// The listening socket. It owns itself once closed, until the loop has let go of it.
class BridgeHTTPServer::Listener {
public:
    using Accept = std::function<void(int status)>;

    Listener(EventLoop& loop, Accept accept) : m_socket(new Socket{{}, std::move(accept)}) {
        uv_tcp_init(loop.handle(), &m_socket->tcp);
        m_socket->tcp.data = m_socket;
    }
    ~Listener() {
        m_socket->accept = nullptr;
        uv_close(reinterpret_cast<uv_handle_t*>(&m_socket->tcp),
                 [](uv_handle_t* handle) { delete static_cast<Socket*>(handle->data); });
    }
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;

    // 0, or the code of what went wrong.
    int listen() {
        sockaddr_in place{};
        uv_ip4_addr(address, port, &place);
        if (const int code = uv_tcp_bind(&m_socket->tcp, reinterpret_cast<const sockaddr*>(&place), 0)) return code;
        return uv_listen(stream(), SOMAXCONN, [](uv_stream_t* socket, int status) {
            // A copy: what it does may close this listener.
            if (const Accept wanted = static_cast<Socket*>(socket->data)->accept) wanted(status);
        });
    }
    uv_stream_t* stream() { return reinterpret_cast<uv_stream_t*>(&m_socket->tcp); }

private:
    struct Socket {
        uv_tcp_t tcp;
        Accept accept;
    };
    Socket* m_socket;
};

BridgeHTTPServer::BridgeHTTPServer(EventLoop& loop, BridgeRouter& router, const Clock& clock)
    : m_loop(loop), m_connections(std::make_unique<ConnectionPool>(loop, router, clock)), m_recovery(loop) {}

BridgeHTTPServer::~BridgeHTTPServer() = default;

void BridgeHTTPServer::start() {
    if (m_listener) return;
    state.set(ServerStarting());
    m_listener = std::make_unique<Listener>(m_loop, [this](int status) { accept(status); });
    if (const int code = m_listener->listen())
        fail(code);
    else
        state.set(ServerListening{port});
}

void BridgeHTTPServer::stop() {
    m_recovery.stop();
    if (!m_listener) return;
    m_listener.reset();
    state.set(ServerStopped());
}

void BridgeHTTPServer::accept(int status) {
    if (status == 0) return Connection::accept(m_listener->stream(), *m_connections);
    // A connection that is waiting for its peer can give a descriptor back.
    if ((status == UV_EMFILE || status == UV_ENFILE) && m_connections->giveUpOldest()) return;
    fail(status);
    recoverLater();
}

void BridgeHTTPServer::recoverLater() {
    m_recovery.start(recoveryTime, [this] {
        start();
        if (!m_listener) recoverLater();
    });
}

void BridgeHTTPServer::fail(int code) {
    m_listener.reset();
    state.set(ServerFailed{std::string("127.0.0.1:32123: ") + uv_strerror(code)});
    log::note(std::get<ServerFailed>(state.get()).message);
}

} // namespace bridge
