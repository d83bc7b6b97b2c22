#include "adapters/mpd/mpd_connection.h"

#include "adapters/applescript/errors.h"
#include "adapters/mpd/waiting.h"
#include "base/file_descriptor.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <mpd/async.h>
#include <netdb.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>

namespace bridge::mpd {

namespace {

void connectTo(const FileDescriptor& socket, const sockaddr* address, socklen_t size, Call& call) {
    if (!socket) throw PlatformError::fromErrno("No socket could be made", errno);
    if (connect(socket.get(), address, size) == 0) return;
    if (errno != EINPROGRESS) throw PlatformError::fromErrno("MPD can't be reached", errno);
    awaitDescriptor(socket.get(), POLLOUT, call);
    int problem = 0;
    socklen_t length = sizeof problem;
    getsockopt(socket.get(), SOL_SOCKET, SO_ERROR, &problem, &length);
    if (problem != 0) throw PlatformError::fromErrno("MPD can't be reached", problem);
}

FileDescriptor connectLocally(const std::string& path, Call& call) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path.size() >= sizeof address.sun_path) fail("The path of MPD's socket is too long: " + path);
    std::memcpy(address.sun_path, path.data(), path.size());
    FileDescriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    connectTo(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address, call);
    return socket;
}

FileDescriptor connectOverNetwork(const MpdServer& server, Call& call) {
    addrinfo hints{}, *found = nullptr;
    hints.ai_socktype = SOCK_STREAM;
    if (const int code = getaddrinfo(server.host.c_str(), server.port.c_str(), &hints, &found); code != 0)
        fail("MPD's computer " + server.host + " was not found: " + gai_strerror(code));
    const std::unique_ptr<addrinfo, decltype(&freeaddrinfo)> addresses(found, &freeaddrinfo);
    for (const auto* address = found;; address = address->ai_next)
        try {
            FileDescriptor socket(::socket(address->ai_family, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
            connectTo(socket, address->ai_addr, address->ai_addrlen, call);
            return socket;
        } catch (const ScriptError&) {
            throw;
        } catch (const PlatformError&) {
            if (!address->ai_next) throw;
        }
}

// "OK MPD 0.23.5", whatever the version.
std::string welcome(const FileDescriptor& socket, Call& call) {
    constexpr size_t longest = 200;
    std::string line;
    while (line.size() < longest) {
        awaitDescriptor(socket.get(), POLLIN, call);
        char byte = 0;
        const auto count = recv(socket.get(), &byte, 1, 0);
        if (count < 0 && (errno == EAGAIN || errno == EINTR)) continue;
        if (count < 0) throw PlatformError::fromErrno("MPD does not answer", errno);
        if (count == 0) fail("MPD has closed the connection.");
        if (byte == '\n') return line;
        line += byte;
    }
    fail("What answers there is not MPD.");
}

} // namespace

MpdRefusal::MpdRefusal(enum mpd_server_error code, unsigned index, const std::string& message)
    : ScriptError(code == MPD_SERVER_ERROR_NO_EXIST ? noSuchObject : applescript::eventFailed, message),
      m_code(code),
      m_index(index) {}

void fail(const std::string& message) {
    throw ScriptError(applescript::eventFailed, message);
}

const std::string& sendable(const std::string& text, const std::string& what) {
    const auto isControl = [](char byte) { return static_cast<unsigned char>(byte) < 0x20 || byte == 0x7f; };
    if (std::ranges::any_of(text, isControl)) fail(what + " can’t contain line breaks or other control characters.");
    return text;
}

MpdConnection::MpdConnection(const MpdServer& server, Call& call) {
    auto socket = server.isLocalSocket() ? connectLocally(server.host, call) : connectOverNetwork(server, call);
    const auto greeting = welcome(socket, call);
    auto* async = mpd_async_new(socket.get());
    if (!async) throw std::bad_alloc();
    socket.release();
    m_connection.reset(mpd_connection_new_async(async, greeting.c_str()));
    if (!m_connection) {
        mpd_async_free(async);
        throw std::bad_alloc();
    }
    check(mpd_connection_get_error(get()) == MPD_ERROR_SUCCESS, call);
    if (!server.password.empty())
        run(call,
            [&](auto* mpd) { return mpd_send_password(mpd, sendable(server.password, "MPD’s password").c_str()); });
}

bool MpdConnection::isUsable() const {
    if (mpd_connection_get_error(get()) != MPD_ERROR_SUCCESS) return false;
    // Unasked, MPD says nothing but goodbye.
    pollfd socket{mpd_connection_get_fd(get()), POLLIN, 0};
    return poll(&socket, 1, 0) == 0;
}

void MpdConnection::finish(Call& call) {
    check(mpd_response_finish(get()), call);
}

void MpdConnection::begin(Call& call) {
    call.check();
    const auto left = std::clamp<int64_t>(call.remaining().count(), 1, INT_MAX);
    mpd_connection_set_timeout(get(), static_cast<unsigned>(left));
}

void MpdConnection::check(bool isGood, Call& call) {
    if (isGood) return;
    const auto kind = mpd_connection_get_error(get());
    const std::string message = mpd_connection_get_error_message(get());
    if (kind == MPD_ERROR_SERVER) {
        const MpdRefusal refusal(mpd_connection_get_server_error(get()),
                                 mpd_connection_get_server_error_location(get()), "MPD: " + message);
        mpd_connection_clear_error(get());
        throw refusal;
    }
    if (kind == MPD_ERROR_TIMEOUT) throw ScriptError(ScriptError::timedOut, "MPD did not answer in time.");
    call.check();
    fail(kind == MPD_ERROR_CLOSED ? "MPD has closed the connection." : "MPD: " + message);
}

void MpdConnection::awaitAnswer(Call& call) {
    awaitDescriptor(mpd_connection_get_fd(get()), POLLIN, call);
}

} // namespace bridge::mpd
