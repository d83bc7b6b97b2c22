#include "server/connection.h"

#include "base/log.h"

#include <sys/socket.h>

namespace bridge {

namespace {

// How long a peer that is still sending may take to read its answer before the connection is closed on it.
constexpr std::chrono::seconds lingeringTime(2);

int descriptor(const uv_tcp_t& socket) {
    uv_os_fd_t found = -1;
    uv_fileno(reinterpret_cast<const uv_handle_t*>(&socket), &found);
    return found;
}

uv_stream_t* stream(uv_tcp_t& socket) {
    return reinterpret_cast<uv_stream_t*>(&socket);
}

uv_buf_t buffer(std::string& text) {
    return uv_buf_init(text.data(), static_cast<unsigned>(text.size()));
}

} // namespace

Connection::Connection(ConnectionPool& pool) : m_pool(&pool) {
    uv_tcp_init(pool.loop().handle(), &m_socket);
    m_socket.data = this;
    m_place = pool.enter(this);
}

void Connection::accept(uv_stream_t* listener, ConnectionPool& pool) {
    auto* connection = new Connection(pool);
    if (uv_accept(listener, stream(connection->m_socket)) != 0)
        connection->close();
    else
        connection->receiveWhatIsHere();
}

Connection::Worth Connection::worth() const {
    switch (m_phase) {
    case Phase::lingering:
    case Phase::closed:
        return Worth::answered;
    case Phase::receiving:
        return Worth::unfinished;
    case Phase::sending:
        return Worth::beingSent;
    case Phase::answering:
        break;
    }
    return Worth::beingAnswered;
}

void Connection::giveUp() {
    if (m_phase == Phase::receiving) {
        auto response =
            Responder(std::nullopt, m_pool->clock())
                .error(serverErrors::badRequest, "The bridge has too many unfinished requests; this one was given up.");
        log::request("given-up", response.status, {});
        auto head = responseHead(response);
        const uv_buf_t parts[] = {buffer(head), buffer(response.body)};
        uv_try_write(stream(m_socket), parts, 2);
    }
    close();
}

void Connection::abandon() {
    m_work = {};
    close();
    m_pool = nullptr;
}

// The request has usually come with the connection. Reading it before the loop is asked to watch saves the asking.
void Connection::receiveWhatIsHere() {
    const auto space = m_pool->readBuffer();
    const ssize_t count = recv(descriptor(m_socket), space.data(), space.size(), MSG_DONTWAIT);
    if (count > 0) requestGrew({space.data(), static_cast<size_t>(count)});
    if (m_phase == Phase::receiving) startReading();
}

void Connection::startReading() {
    const int code = uv_read_start(
        stream(m_socket),
        [](uv_handle_t* handle, size_t, uv_buf_t* into) {
            const auto space = static_cast<Connection*>(handle->data)->m_pool->readBuffer();
            *into = uv_buf_init(space.data(), static_cast<unsigned>(space.size()));
        },
        [](uv_stream_t* socket, ssize_t count, const uv_buf_t*) {
            if (count != 0) static_cast<Connection*>(socket->data)->received(count);
        });
    if (code != 0) close();
}

void Connection::received(ssize_t count) {
    if (m_phase == Phase::lingering) {
        if (count < 0) close();
    } else if (count < 0) {
        ended(count);
    } else {
        requestGrew(std::string_view(m_pool->readBuffer().data(), static_cast<size_t>(count)));
    }
}

void Connection::requestGrew(std::string_view bytes) {
    const auto before = static_cast<ptrdiff_t>(m_reader.buffered());
    const auto state = m_reader.add(bytes);
    m_pool->countBuffered(static_cast<ptrdiff_t>(m_reader.buffered()) - before);
    if (state == HTTPRequestReader::State::incomplete || m_phase == Phase::closed) return;

    uv_read_stop(stream(m_socket));
    if (state == HTTPRequestReader::State::tooLarge) {
        refuse("too-large", serverErrors::requestTooLarge, "Request exceeds 1 MB.");
        return;
    }
    m_peerMaySendMore = !m_reader.endsExactly();
    m_pool->countBuffered(-static_cast<ptrdiff_t>(m_reader.buffered()));
    m_phase = Phase::answering;
    m_work = answer(m_reader.take());
    m_work.start();
}

void Connection::ended(ssize_t code) {
    uv_read_stop(stream(m_socket));
    m_peerMaySendMore = false;
    const auto* problem = code == UV_EOF ? "Incomplete HTTP request." : uv_strerror(static_cast<int>(code));
    refuse("incomplete", serverErrors::badRequest, problem);
}

void Connection::refuse(std::string_view logName, const WireError& error, std::string_view message) {
    auto response = Responder(std::nullopt, m_pool->clock()).error(error, message);
    log::request(logName, response.status, {});
    send(std::move(response));
}

Task<> Connection::answer(ParsedHTTPRequest request) {
    const auto started = m_pool->clock().uptime();
    auto response = co_await m_pool->router().response(std::move(request));
    log::request(response.logName, response.status, m_pool->clock().uptime() - started);
    send(std::move(response));
}

void Connection::send(BridgeResponse response) {
    if (m_phase == Phase::receiving) {
        m_pool->countBuffered(-static_cast<ptrdiff_t>(m_reader.buffered()));
        m_reader = {};
    }
    m_phase = Phase::sending;
    auto head = responseHead(response);
    const uv_buf_t parts[] = {buffer(head), buffer(response.body)};
    const int taken = uv_try_write(stream(m_socket), parts, 2);
    if (taken < 0 && taken != UV_EAGAIN) return close();

    const auto written = static_cast<size_t>(std::max(taken, 0));
    if (written == head.size() + response.body.size()) return sent();
    m_outgoing = (head + response.body).substr(written);
    const uv_buf_t rest = buffer(m_outgoing);
    const int code = uv_write(&m_write, stream(m_socket), &rest, 1, [](uv_write_t* write, int status) {
        auto* connection = static_cast<Connection*>(write->handle->data);
        if (status == 0)
            connection->sent();
        else
            connection->close();
    });
    if (code != 0) close();
}

void Connection::sent() {
    if (m_peerMaySendMore)
        linger();
    else
        close();
}

// Closing while bytes of the peer are unread, or on their way, would reset the connection, and the reset can destroy
// the answer before the peer has read it. So only our direction is ended, and what still comes is thrown away for a
// while.
void Connection::linger() {
    m_phase = Phase::lingering;
    shutdown(descriptor(m_socket), SHUT_WR);
    m_patience = std::make_unique<Timer>(m_pool->loop());
    m_patience->start(lingeringTime, [this] { close(); });
    startReading();
}

void Connection::close() {
    if (m_phase == Phase::closed) return;
    if (m_phase == Phase::receiving) m_pool->countBuffered(-static_cast<ptrdiff_t>(m_reader.buffered()));
    m_phase = Phase::closed;
    m_patience.reset();
    m_pool->leave(m_place);
    uv_close(reinterpret_cast<uv_handle_t*>(&m_socket),
             [](uv_handle_t* handle) { delete static_cast<Connection*>(handle->data); });
}

} // namespace bridge
