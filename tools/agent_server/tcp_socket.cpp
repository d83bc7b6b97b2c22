#include "tools/agent_server/tcp_socket.h"

#include "base/platform_error.h"

#include <cerrno>
#include <fcntl.h>
#include <netinet/in.h>
#include <sys/socket.h>

namespace bridge {

namespace {

void prepare(const FileDescriptor& socket) {
    fcntl(socket.get(), F_SETFD, FD_CLOEXEC);
    fcntl(socket.get(), F_SETFL, fcntl(socket.get(), F_GETFL) | O_NONBLOCK);
}

} // namespace

FileDescriptor listenOnLoopback(uint16_t port) {
    FileDescriptor listener(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
    if (!listener) throw PlatformError::fromErrno("No socket", errno);
    prepare(listener);
    const int yes = 1;
    setsockopt(listener.get(), SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    if (bind(listener.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
        listen(listener.get(), SOMAXCONN) != 0)
        throw PlatformError::fromErrno("The port can't be used", errno);
    return listener;
}

uint16_t portOf(const FileDescriptor& socket) {
    sockaddr_in address{};
    socklen_t size = sizeof address;
    if (getsockname(socket.get(), reinterpret_cast<sockaddr*>(&address), &size) != 0)
        throw PlatformError::fromErrno("The socket has no address", errno);
    return ntohs(address.sin_port);
}

FileDescriptor acceptConnection(const FileDescriptor& listener) {
    FileDescriptor connection(accept4(listener.get(), nullptr, nullptr, SOCK_CLOEXEC));
    if (connection) prepare(connection);
    return connection;
}

} // namespace bridge
