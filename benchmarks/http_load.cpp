#include "benchmarks/http_load.h"

#include <arpa/inet.h>
#include <cstdio>
#include <cstdlib>
#include <netinet/in.h>
#include <sys/epoll.h>
#include <sys/socket.h>
#include <unistd.h>
#include <vector>

namespace bridge::bench {

namespace {

sockaddr_in loopback(int port) {
    sockaddr_in place{};
    place.sin_family = AF_INET;
    place.sin_port = htons(static_cast<uint16_t>(port));
    place.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    return place;
}

[[noreturn]] void giveUp(const char* what) {
    std::perror(what);
    std::exit(1);
}

int connectTo(int port) {
    const int client = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const auto place = loopback(port);
    if (connect(client, reinterpret_cast<const sockaddr*>(&place), sizeof place) == 0) return client;
    close(client);
    return -1;
}

} // namespace

std::string fetch(int port, const std::string& request) {
    const int client = connectTo(port);
    if (client < 0) return {};
    std::string answer;
    char part[65536];
    ssize_t count;
    if (send(client, request.data(), request.size(), MSG_NOSIGNAL) > 0)
        while ((count = recv(client, part, sizeof part, 0)) > 0)
            answer.append(part, static_cast<size_t>(count));
    close(client);
    return answer;
}

void load(int port, const std::string& request, size_t answerSize, int count, int inFlight) {
    const int poll = epoll_create1(EPOLL_CLOEXEC);
    std::vector<size_t> received(1024 * 64);
    int started = 0, finished = 0;
    const auto begin = [&] {
        const int client = connectTo(port);
        if (client < 0 || send(client, request.data(), request.size(), MSG_NOSIGNAL) < 0) giveUp("connection");
        received[static_cast<size_t>(client)] = 0;
        epoll_event event{};
        event.events = EPOLLIN;
        event.data.fd = client;
        epoll_ctl(poll, EPOLL_CTL_ADD, client, &event);
        ++started;
    };
    while (started < inFlight && started < count)
        begin();

    epoll_event events[64];
    char part[65536];
    while (finished < count) {
        const int ready = epoll_wait(poll, events, 64, -1);
        for (int index = 0; index < ready; ++index) {
            const int client = events[index].data.fd;
            const ssize_t bytes = recv(client, part, sizeof part, 0);
            if (bytes > 0) {
                received[static_cast<size_t>(client)] += static_cast<size_t>(bytes);
                continue;
            }
            if (bytes < 0 || received[static_cast<size_t>(client)] != answerSize) giveUp("answer");
            close(client);
            ++finished;
            if (started < count) begin();
        }
    }
    close(poll);
}

} // namespace bridge::bench
