#include "app/instance_socket.h"

#include "base/file_descriptor.h"
#include "base/platform_error.h"

#include <array>
#include <cstring>
#include <poll.h>
#include <set>
#include <sys/socket.h>
#include <sys/un.h>
#include <uv.h>

namespace bridge {

namespace {

constexpr size_t longestLine = 4096;

std::string socketPath(const std::string& folder) {
    return folder + "/socket";
}

// Reads up to the end of a line; nothing when the time is over or the other side hangs up before.
std::optional<std::string> readLine(int socket, std::chrono::milliseconds patience) {
    std::string line;
    const auto deadline = std::chrono::steady_clock::now() + patience;
    while (line.size() < longestLine) {
        const auto left =
            std::chrono::duration_cast<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now());
        pollfd events{socket, POLLIN, 0};
        if (left.count() <= 0 || poll(&events, 1, static_cast<int>(left.count())) <= 0) return std::nullopt;
        char letter = 0;
        if (read(socket, &letter, 1) != 1) return std::nullopt;
        if (letter == '\n') return line;
        line += letter;
    }
    return std::nullopt;
}

} // namespace

// Lives until the loop has let go of every handle.
struct InstanceSocket::State {
    struct Visitor {
        uv_pipe_t pipe{};
        State* owner = nullptr;
        std::string line;
        std::array<char, 512> buffer{};
    };

    uv_pipe_t listener{};
    Handler handler;
    std::set<Visitor*> visitors;
    int open = 0;

    static uv_stream_t* stream(uv_pipe_t& pipe) { return reinterpret_cast<uv_stream_t*>(&pipe); }

    void letGo() {
        if (--open == 0) delete this;
    }
    void welcome() {
        auto* visitor = new Visitor;
        visitor->owner = this;
        uv_pipe_init(listener.loop, &visitor->pipe, 0);
        visitor->pipe.data = visitor;
        ++open;
        visitors.insert(visitor);
        if (uv_accept(stream(listener), stream(visitor->pipe)) != 0) return dismiss(*visitor);
        uv_read_start(
            stream(visitor->pipe),
            [](uv_handle_t* handle, size_t, uv_buf_t* space) {
                auto& buffer = static_cast<Visitor*>(handle->data)->buffer;
                *space = uv_buf_init(buffer.data(), buffer.size());
            },
            [](uv_stream_t* handle, ssize_t count, const uv_buf_t* space) {
                auto& speaker = *static_cast<Visitor*>(handle->data);
                speaker.owner->hear(speaker, count, space->base);
            });
    }
    void hear(Visitor& visitor, ssize_t count, const char* bytes) {
        if (count > 0) visitor.line.append(bytes, static_cast<size_t>(count));
        const auto end = visitor.line.find('\n');
        if (end == visitor.line.npos && count >= 0 && visitor.line.size() < longestLine) return;
        if (const auto message = decodeInstanceMessage(visitor.line.substr(0, end));
            message && end != visitor.line.npos) {
            auto answer = encode(handler(*message));
            const auto text = uv_buf_init(answer.data(), static_cast<unsigned>(answer.size()));
            uv_try_write(stream(visitor.pipe), &text, 1); // a socket always takes so little
        }
        dismiss(visitor);
    }
    void dismiss(Visitor& visitor) {
        visitors.erase(&visitor);
        uv_close(reinterpret_cast<uv_handle_t*>(&visitor.pipe), [](uv_handle_t* handle) {
            auto* gone = static_cast<Visitor*>(handle->data);
            gone->owner->letGo();
            delete gone;
        });
    }
    void close() {
        while (!visitors.empty())
            dismiss(**visitors.begin());
        uv_close(reinterpret_cast<uv_handle_t*>(&listener),
                 [](uv_handle_t* handle) { static_cast<State*>(handle->data)->letGo(); });
    }
};

InstanceSocket::InstanceSocket(EventLoop& loop, const std::string& folder, Handler handler)
    : m_state(new State), m_path(socketPath(folder)) {
    m_state->handler = std::move(handler);
    m_state->open = 1;
    m_state->listener.data = m_state;
    uv_pipe_init(loop.handle(), &m_state->listener, 0);
    unlink(m_path.c_str());
    // libuv would cut a path short that a socket can't have.
    int code = m_path.size() < sizeof(sockaddr_un::sun_path) ? uv_pipe_bind(&m_state->listener, m_path.c_str())
                                                             : UV_ENAMETOOLONG;
    if (code == 0)
        code = uv_listen(State::stream(m_state->listener), SOMAXCONN, [](uv_stream_t* listener, int status) {
            if (status == 0) static_cast<State*>(listener->data)->welcome();
        });
    if (code == 0) return;
    m_state->close();
    throw PlatformError(m_path + ": " + uv_strerror(code));
}

InstanceSocket::~InstanceSocket() {
    // Closing the listener removes the socket's file as well.
    m_state->close();
}

std::optional<InstanceAnswer> tellRunningInstance(const std::string& folder, const InstanceMessage& message,
                                                  std::chrono::milliseconds patience) {
    const auto path = socketPath(folder);
    sockaddr_un place{};
    place.sun_family = AF_UNIX;
    if (path.size() >= sizeof place.sun_path) return std::nullopt;
    std::memcpy(place.sun_path, path.data(), path.size());
    const FileDescriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    if (connect(socket.get(), reinterpret_cast<const sockaddr*>(&place), sizeof place) != 0) return std::nullopt;
    const auto line = encode(message);
    if (send(socket.get(), line.data(), line.size(), MSG_NOSIGNAL) != static_cast<ssize_t>(line.size()))
        return std::nullopt;
    const auto answer = readLine(socket.get(), patience);
    return answer ? decodeInstanceAnswer(*answer) : std::nullopt;
}

} // namespace bridge
