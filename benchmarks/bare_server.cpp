#include "benchmarks/bare_server.h"

#include <arpa/inet.h>
#include <cstdlib>
#include <netinet/in.h>
#include <sys/epoll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace bridge::bench {

namespace {

int listenOn(int port) {
    const int listener = socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    const int yes = 1;
    setsockopt(listener, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
    sockaddr_in place{};
    place.sin_family = AF_INET;
    place.sin_port = htons(static_cast<uint16_t>(port));
    place.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    if (bind(listener, reinterpret_cast<sockaddr*>(&place), sizeof place) != 0 || listen(listener, SOMAXCONN) != 0)
        std::_Exit(1);
    return listener;
}

void watch(int poll, int descriptor) {
    epoll_event event{};
    event.events = EPOLLIN;
    event.data.fd = descriptor;
    epoll_ctl(poll, EPOLL_CTL_ADD, descriptor, &event);
}

} // namespace

void runBareServer(int port, const std::string& answer) {
    const int listener = listenOn(port);
    const int poll = epoll_create1(EPOLL_CLOEXEC);
    watch(poll, listener);
    epoll_event events[64];
    char request[65536];
    while (true) {
        const int ready = epoll_wait(poll, events, 64, -1);
        for (int index = 0; index < ready; ++index) {
            const int descriptor = events[index].data.fd;
            if (descriptor == listener) {
                int client;
                while ((client = accept4(listener, nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC)) >= 0)
                    watch(poll, client);
            } else {
                if (recv(descriptor, request, sizeof request, 0) > 0)
                    send(descriptor, answer.data(), answer.size(), MSG_NOSIGNAL);
                close(descriptor);
            }
        }
    }
}

} // namespace bridge::bench
