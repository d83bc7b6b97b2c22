#include "tools/agent_server/stand_in_agent_server.h"

#include "base/platform_error.h"
#include "tools/agent_server/http_text.h"
#include "tools/agent_server/pairing_desk.h"
#include "tools/agent_server/tcp_socket.h"

#include <array>
#include <cerrno>
#include <condition_variable>
#include <fcntl.h>
#include <list>
#include <mutex>
#include <poll.h>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>

namespace bridge {

namespace {

using Behaviour = StandInAgentServer::Behaviour;
using Received = StandInAgentServer::Received;

constexpr int dripMilliseconds = 10;
constexpr std::string_view pairingPath = "/apple-bridge/native/pair";

// After its output a connection may have more of the same to send.
enum class Then { close, repeat, drip, stayOpen };

struct Connection {
    FileDescriptor socket;
    std::string input;
    std::string output;
    Then then = Then::close;
    bool answered = false;
};

} // namespace

struct StandInAgentServer::State {
    const FileDescriptor listener;
    const FileDescriptor redirectListener;
    FileDescriptor wakeRead;
    FileDescriptor wakeWrite;
    std::thread thread;

    std::list<Connection> connections; // the thread's alone

    mutable std::mutex mutex; // guards what follows
    mutable std::condition_variable changed;
    PairingDesk desk;
    Behaviour behaviour = Behaviour::honest;
    std::string scripted;
    std::vector<Received> received;
    int redirectVisits = 0;
    size_t hangUps = 0;

    explicit State(uint16_t port) : listener(listenOnLoopback(port)), redirectListener(listenOnLoopback(0)) {
        std::array<int, 2> ends{};
        if (pipe2(ends.data(), O_CLOEXEC) != 0) throw PlatformError::fromErrno("No pipe", errno);
        wakeRead = FileDescriptor(ends[0]);
        wakeWrite = FileDescriptor(ends[1]);
    }

    std::string redirectURL() const { return "http://127.0.0.1:" + std::to_string(portOf(redirectListener)); }

    void work();
    void welcome();
    bool serve(Connection& connection, short events);
    bool receive(Connection& connection);
    bool send(Connection& connection);
    void answer(Connection& connection, Received request);
    std::string honestAnswer(const Received& request);
    void countHangUp();
};

void StandInAgentServer::State::work() {
    while (true) {
        std::vector<pollfd> polled{
            {wakeRead.get(), POLLIN, 0}, {listener.get(), POLLIN, 0}, {redirectListener.get(), POLLIN, 0}};
        bool dripping = false;
        for (const auto& connection : connections) {
            const bool sends = !connection.output.empty() && connection.then != Then::drip;
            dripping = dripping || (connection.answered && connection.then == Then::drip);
            polled.push_back({connection.socket.get(), static_cast<short>(sends ? POLLIN | POLLOUT : POLLIN), 0});
        }
        if (poll(polled.data(), polled.size(), dripping ? dripMilliseconds : -1) < 0 && errno != EINTR) return;
        if (polled[0].revents != 0) return;
        size_t index = 3;
        for (auto connection = connections.begin(); connection != connections.end(); ++index) {
            if (serve(*connection, polled[index].revents))
                ++connection;
            else
                connection = connections.erase(connection);
        }
        welcome();
    }
}

void StandInAgentServer::State::welcome() {
    while (auto socket = acceptConnection(listener))
        connections.emplace_back().socket = std::move(socket);
    while (const auto socket = acceptConnection(redirectListener)) {
        std::lock_guard lock(mutex);
        ++redirectVisits;
    }
}

// Whether the connection goes on.
bool StandInAgentServer::State::serve(Connection& connection, short events) {
    if ((events & (POLLIN | POLLHUP | POLLERR)) != 0 && !receive(connection)) {
        if (connection.answered) countHangUp();
        return false;
    }
    if (!connection.answered) {
        auto request = parseRequest(connection.input);
        if (!request) return true;
        answer(connection, std::move(*request));
    }
    if (connection.then == Then::stayOpen) return true;
    if (connection.then == Then::drip && events == 0) connection.output = "x";
    return send(connection);
}

bool StandInAgentServer::State::receive(Connection& connection) {
    std::array<char, 16384> buffer;
    while (true) {
        const ssize_t count = recv(connection.socket.get(), buffer.data(), buffer.size(), 0);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return errno == EAGAIN;
        if (count == 0) return false;
        connection.input.append(buffer.data(), static_cast<size_t>(count));
    }
}

bool StandInAgentServer::State::send(Connection& connection) {
    while (!connection.output.empty()) {
        const ssize_t count =
            ::send(connection.socket.get(), connection.output.data(), connection.output.size(), MSG_NOSIGNAL);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0 && errno == EAGAIN) return true;
        if (count < 0) {
            countHangUp();
            return false;
        }
        connection.output.erase(0, static_cast<size_t>(count));
    }
    if (connection.then == Then::repeat) connection.output.assign(65536, 'x');
    return connection.then != Then::close;
}

void StandInAgentServer::State::answer(Connection& connection, Received request) {
    std::lock_guard lock(mutex);
    connection.answered = true;
    switch (behaviour) {
    case Behaviour::honest:
        connection.output = honestAnswer(request);
        break;
    case Behaviour::silent:
        connection.then = Then::stayOpen;
        break;
    case Behaviour::dripping:
        connection.output = "HTTP/1.1 200 OK\r\nContent-Length: 1000000\r\n\r\n";
        connection.then = Then::drip;
        break;
    case Behaviour::redirecting:
        connection.output = answerText(307, "text/plain", "", "Location: " + redirectURL() + request.path + "\r\n");
        break;
    case Behaviour::failingInText:
        connection.output = answerText(500, "text/plain", "Something broke.");
        break;
    case Behaviour::withoutCredential:
        connection.output = jsonAnswer(200, "{}");
        break;
    case Behaviour::emptyCredential:
        connection.output = jsonAnswer(200, R"({"credential":""})");
        break;
    case Behaviour::flooding:
        connection.output = "HTTP/1.1 200 OK\r\n\r\n";
        connection.then = Then::repeat;
        break;
    case Behaviour::hangingUp:
        break;
    case Behaviour::notHTTP:
        connection.output = "220 mail.example ESMTP\r\n";
        break;
    case Behaviour::scripted:
        connection.output = scripted;
        break;
    }
    received.push_back(std::move(request));
    changed.notify_all();
}

std::string StandInAgentServer::State::honestAnswer(const Received& request) {
    if (!request.path.ends_with(pairingPath)) return jsonAnswer(404, R"({"error":"Not found."})");
    if (request.method != "POST") return jsonAnswer(405, R"({"error":"Use POST."})");
    const auto type = request.headers.find("content-type");
    if (type == request.headers.end() || type->second != "application/json")
        return jsonAnswer(415, R"({"error":"Send JSON."})");
    const auto result = desk.pair(request.body);
    return jsonAnswer(result.status, result.body);
}

void StandInAgentServer::State::countHangUp() {
    std::lock_guard lock(mutex);
    ++hangUps;
    changed.notify_all();
}

StandInAgentServer::StandInAgentServer(uint16_t port) : m_state(std::make_unique<State>(port)) {
    m_state->thread = std::thread([state = m_state.get()] { state->work(); });
}

StandInAgentServer::~StandInAgentServer() {
    m_state->wakeWrite = FileDescriptor();
    m_state->thread.join();
}

uint16_t StandInAgentServer::port() const {
    return portOf(m_state->listener);
}

std::string StandInAgentServer::url() const {
    return "http://127.0.0.1:" + std::to_string(port());
}

std::string StandInAgentServer::issueCode() {
    std::lock_guard lock(m_state->mutex);
    return m_state->desk.issueCode();
}

void StandInAgentServer::behave(Behaviour behaviour) {
    std::lock_guard lock(m_state->mutex);
    m_state->behaviour = behaviour;
}

void StandInAgentServer::answerWith(int status, std::string body) {
    std::lock_guard lock(m_state->mutex);
    m_state->behaviour = Behaviour::scripted;
    m_state->scripted = jsonAnswer(status, body);
}

std::vector<Received> StandInAgentServer::received() const {
    std::lock_guard lock(m_state->mutex);
    return m_state->received;
}

std::vector<std::string> StandInAgentServer::credentials() const {
    std::lock_guard lock(m_state->mutex);
    return m_state->desk.credentials();
}

int StandInAgentServer::redirectVisits() const {
    std::lock_guard lock(m_state->mutex);
    return m_state->redirectVisits;
}

std::string StandInAgentServer::redirectURL() const {
    return m_state->redirectURL();
}

void StandInAgentServer::waitForRequests(size_t count) const {
    std::unique_lock lock(m_state->mutex);
    m_state->changed.wait(lock, [&] { return m_state->received.size() >= count; });
}

void StandInAgentServer::waitForHangUps(size_t count) const {
    std::unique_lock lock(m_state->mutex);
    m_state->changed.wait(lock, [&] { return m_state->hangUps >= count; });
}

} // namespace bridge
