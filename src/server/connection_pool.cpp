#include "server/connection.h"

#include <algorithm>
#include <fcntl.h>
#include <sys/resource.h>

namespace bridge {

namespace {

constexpr rlim_t mostConnections = 4096;

rlim_t openDescriptors(rlim_t limit) {
    rlim_t count = 0;
    for (rlim_t descriptor = 0; descriptor < limit; ++descriptor)
        if (fcntl(static_cast<int>(descriptor), F_GETFD) != -1) ++count;
    return count;
}

// What the system lets us open, less what is open already and a part for everything but connections: files and stores.
size_t connectionLimit() {
    rlimit descriptors{};
    if (getrlimit(RLIMIT_NOFILE, &descriptors) != 0) return 256;
    const rlim_t limit = std::min(descriptors.rlim_cur, 2 * mostConnections);
    const rlim_t free = limit - std::min(limit, openDescriptors(limit));
    const rlim_t reserved = std::min<rlim_t>(64, free / 4 + 4);
    return static_cast<size_t>(std::clamp<rlim_t>(free - std::min(free, reserved), 1, mostConnections));
}

} // namespace

ConnectionPool::ConnectionPool(EventLoop& loop, BridgeRouter& router, const Clock& clock)
    : m_loop(loop), m_router(router), m_clock(clock), m_maximumConnections(connectionLimit()), m_readBuffer(readSize) {}

ConnectionPool::~ConnectionPool() {
    while (!m_connections.empty())
        m_connections.front()->abandon();
}

bool ConnectionPool::giveUpOldest() {
    using Worth = Connection::Worth;
    for (const auto worth : {Worth::answered, Worth::unfinished, Worth::beingSent}) {
        const auto oldest = std::find_if(m_connections.begin(), m_connections.end(),
                                         [worth](const auto* each) { return each->worth() == worth; });
        if (oldest == m_connections.end()) continue;
        (*oldest)->giveUp();
        return true;
    }
    return false;
}

std::list<Connection*>::iterator ConnectionPool::enter(Connection* connection) {
    if (m_connections.size() >= m_maximumConnections) giveUpOldest();
    return m_connections.insert(m_connections.end(), connection);
}

void ConnectionPool::leave(std::list<Connection*>::iterator place) {
    m_connections.erase(place);
}

void ConnectionPool::countBuffered(ptrdiff_t change) {
    m_buffered += static_cast<size_t>(change);
    while (m_buffered > maximumBuffered) {
        const auto oldest = std::find_if(m_connections.begin(), m_connections.end(),
                                         [](const auto* each) { return each->buffered() > 0; });
        if (oldest == m_connections.end()) return;
        (*oldest)->giveUp();
    }
}

} // namespace bridge
