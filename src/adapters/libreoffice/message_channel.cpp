#include "adapters/libreoffice/message_channel.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <poll.h>
#include <sys/socket.h>

namespace bridge::office {

namespace {

bool isTransient(int code) {
    return code == EINTR || code == EAGAIN || code == EWOULDBLOCK;
}

} // namespace

void MessageChannel::send(std::string_view message, const Patience& patience) {
    if (message.size() > largestMessage) throw ChannelClosed("the message is too large");
    const auto length = static_cast<uint32_t>(message.size());
    std::array<char, sizeof(length)> head{};
    std::memcpy(head.data(), &length, head.size());
    for (auto part : {std::string_view(head.data(), head.size()), message})
        while (!part.empty()) {
            const auto sent = ::send(m_socket.get(), part.data(), part.size(), MSG_DONTWAIT | MSG_NOSIGNAL);
            if (sent < 0 && !isTransient(errno)) throw ChannelClosed(std::strerror(errno));
            if (sent < 0)
                waitFor(m_socket.get(), Readiness::writing, patience);
            else
                part.remove_prefix(static_cast<size_t>(sent));
        }
}

void MessageChannel::receive(char* bytes, size_t size, const Patience& patience) {
    while (size > 0) {
        const auto received = recv(m_socket.get(), bytes, size, MSG_DONTWAIT);
        if (received == 0) throw ChannelClosed("the other side has closed the connection");
        if (received < 0 && !isTransient(errno)) throw ChannelClosed(std::strerror(errno));
        if (received < 0) {
            waitFor(m_socket.get(), Readiness::reading, patience);
            continue;
        }
        bytes += received;
        size -= static_cast<size_t>(received);
    }
}

std::string MessageChannel::receive(const Patience& patience) {
    uint32_t length = 0;
    std::array<char, sizeof(length)> head{};
    receive(head.data(), head.size(), patience);
    std::memcpy(&length, head.data(), head.size());
    if (length > largestMessage) throw ChannelClosed("the message is too large");
    std::string message(length, '\0');
    receive(message.data(), message.size(), patience);
    return message;
}

bool MessageChannel::isSilent() const {
    pollfd watched{m_socket.get(), POLLIN, 0};
    return poll(&watched, 1, 0) == 0;
}

bool MessageChannel::isConnected() const {
    pollfd watched{m_socket.get(), 0, 0};
    return poll(&watched, 1, 0) == 0;
}

} // namespace bridge::office
