#include "tests/adapters/geoclue/satellite_receiver.h"

#include <cmath>
#include <cstring>
#include <fmt/format.h>
#include <stdexcept>
#include <sys/socket.h>
#include <sys/un.h>

namespace bridge {

namespace {

// Degrees and minutes: 52.52 is 5231.2000.
std::string degrees(double value, int width) {
    const double whole = std::floor(std::abs(value));
    return fmt::format("{:0{}.0f}{:07.4f}", whole, width, (std::abs(value) - whole) * 60);
}

std::string sentenceAt(double latitude, double longitude) {
    return fmt::format("$GPGGA,112841.00,{},{},{},{},1,08,0.9,34.5,M,46.9,M,,*47\r\n", degrees(latitude, 2),
                       latitude < 0 ? 'S' : 'N', degrees(longitude, 3), longitude < 0 ? 'W' : 'E');
}

void tell(const FileDescriptor& listener, const std::string& sentence) {
    send(listener.get(), sentence.data(), sentence.size(), MSG_NOSIGNAL);
}

} // namespace

SatelliteReceiver::SatelliteReceiver(const std::string& socket, double latitude, double longitude)
    : m_sentence(sentenceAt(latitude, longitude)), m_socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (socket.size() >= sizeof address.sun_path) throw std::runtime_error("too long a path for a socket");
    std::memcpy(address.sun_path, socket.c_str(), socket.size());
    if (bind(m_socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
        listen(m_socket.get(), 8) != 0)
        throw std::runtime_error("no socket " + socket);
    m_thread = std::thread([this] { serve(); });
}

SatelliteReceiver::~SatelliteReceiver() {
    shutdown(m_socket.get(), SHUT_RDWR);
    m_thread.join();
}

void SatelliteReceiver::serve() {
    while (true) {
        FileDescriptor listener(accept4(m_socket.get(), nullptr, nullptr, SOCK_CLOEXEC));
        if (listener.get() < 0) return;
        const std::lock_guard lock(m_mutex);
        tell(listener, m_sentence);
        m_listeners.push_back(std::move(listener));
    }
}

void SatelliteReceiver::move(double latitude, double longitude) {
    const std::lock_guard lock(m_mutex);
    m_sentence = sentenceAt(latitude, longitude);
    for (const auto& listener : m_listeners)
        tell(listener, m_sentence);
}

} // namespace bridge
